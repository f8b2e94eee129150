#include "app/RootViewModel.h"

#include "app/StateStep.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/SerialWorker.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <utility>
#include <variant>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The absolute path of a folder on this machine, without a trailing slash; empty for any other
/// URL.
QString folderPath(const QUrl &folder)
{
    const QString path = folder.toLocalFile();
    return path.isEmpty() ? path : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

Repo openedRepository(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    return Repo{QUuid::createUuid(), QUrl::fromLocalFile(path), name.isEmpty() ? path : name};
}

template<typename ViewModel>
void drop(ViewModel *viewModel)
{
    if (viewModel != nullptr) {
        viewModel->cancelAll();
        // Bindings of the screen that is going, and the call that led here, may still use it.
        viewModel->deleteLater();
    }
}

} // namespace

RootViewModel::RootViewModel(AppCoordinator &coordinator, GitWorker &gitWorker, AIWorker &aiWorker,
                             KeychainAccessNotice &keychainAccessNotice,
                             NotificationCenter &notificationCenter, QObject *parent)
    : QObject(parent)
    , m_coordinator(coordinator)
    , m_gitWorker(gitWorker)
    , m_aiWorker(aiWorker)
    , m_keychainAccessNotice(keychainAccessNotice)
    , m_notificationCenter(notificationCenter)
{
    connect(&m_coordinator, &AppCoordinator::routeChanged, this, &RootViewModel::showRoute);
    showRoute();
}

RootViewModel::~RootViewModel() = default;

QString RootViewModel::refusal() const
{
    return m_refusal.value_or(QString());
}

void RootViewModel::openFolder(const QUrl &folder)
{
    VANTREL_ASSERT_UI_THREAD();
    m_openTask = Job(runOpenFolder(folder));
    StateStep step(*this);
    step.set(m_isOpening, true, &RootViewModel::isOpeningChanged);
    step.publish();
}

void RootViewModel::showRoute()
{
    FileListViewModel *const formerFileList = std::exchange(m_fileList, nullptr);
    DiffViewModel *const formerDiff = std::exchange(m_diff, nullptr);
    const AppCoordinator::Route &route = m_coordinator.route();
    if (const auto *const files = std::get_if<AppCoordinator::FilesRoute>(&route)) {
        m_fileList = new FileListViewModel(files->repo, m_gitWorker, m_coordinator, this);
    } else if (const auto *const diff = std::get_if<AppCoordinator::DiffRoute>(&route)) {
        m_diff = new DiffViewModel(*diff, m_gitWorker, m_aiWorker, m_keychainAccessNotice,
                                   m_coordinator, m_notificationCenter, this);
    }
    drop(formerFileList);
    drop(formerDiff);
    if (m_fileList != formerFileList || m_diff != formerDiff) {
        Q_EMIT screenChanged();
    }
}

Task<> RootViewModel::runOpenFolder(QUrl folder)
{
    const QString path = folderPath(folder);
    // A thread for this one question: a disk that never answers holds up neither a later question
    // nor the end of the application.
    SerialWorker disk(SerialWorker::AtEnd::leave);
    // Captured anew: a constant cannot be moved, and would outlive the call on its thread.
    auto ask = [path = path](const WorkControl &) {
        return !path.isEmpty() && QFileInfo::exists(path + u"/.git"_s);
    };
    auto asking = disk.run(std::move(ask));
    const bool isRepository = co_await std::move(asking);
    if (!isRepository) {
        endOpening(u"That folder doesn't contain a .git directory."_s);
        co_return;
    }
    const Repo repo = openedRepository(path);
    endOpening(std::nullopt);
    m_coordinator.openRepository(repo);
}

void RootViewModel::endOpening(std::optional<QString> refusal)
{
    StateStep step(*this);
    step.set(m_refusal, std::move(refusal), &RootViewModel::refusalChanged);
    step.set(m_isOpening, false, &RootViewModel::isOpeningChanged);
    step.publish();
}

} // namespace vantrel
