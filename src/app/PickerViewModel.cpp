#include "app/PickerViewModel.h"

#include "app/AppCoordinator.h"
#include "git/RepositoryGuarding.h"
#include "persistence/RecentReposStoring.h"
#include "platform/StateStep.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/SerialWorker.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <utility>

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

/// The last component of the path; that of the root folder is the path itself.
QString folderName(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    return name.isEmpty() ? path : name;
}

/// What the disk and git say of a folder.
struct FolderLook
{
    bool isRepository = false;
    QList<RepositoryProgram> programs{}; ///< To be asked for before it is opened.
    QList<RecentRepo> recentRepos{};     ///< With this one, when there was nothing to ask.
};

/// The recent repositories once this one is the newest.
QList<RecentRepo> recorded(RecentReposStoring &store, const QString &name, const QString &path)
{
    store.record(name, path);
    return store.load();
}

} // namespace

PickerViewModel::PickerViewModel(std::shared_ptr<RecentReposStoring> recentReposStore,
                                 std::shared_ptr<RepositoryGuarding> repositoryGuard,
                                 AppCoordinator &coordinator, QObject *parent)
    : QObject(parent)
    , m_recentReposStore(std::move(recentReposStore))
    , m_repositoryGuard(std::move(repositoryGuard))
    , m_coordinator(coordinator)
{
    reloadRecents();
}

QString PickerViewModel::errorMessage() const
{
    return m_errorMessage.value_or(QString());
}

void PickerViewModel::reloadRecents()
{
    VANTREL_ASSERT_UI_THREAD();
    m_reloadTask = Job(runReload());
}

Task<std::optional<Repo>> PickerViewModel::open(QUrl url)
{
    VANTREL_ASSERT_UI_THREAD();
    const QString path = folderPath(url);
    const Repo repo{QUuid::createUuid(), QUrl::fromLocalFile(path), folderName(path)};
    SerialWorker disk(SerialWorker::AtEnd::leave);
    // Captured anew: a constant cannot be moved, and would outlive the call on its thread.
    auto look = [store = m_recentReposStore, guard = m_repositoryGuard, path = path,
                 repo = repo](const WorkControl &control) {
        FolderLook found;
        found.isRepository = !path.isEmpty() && store->isRepository(path);
        if (found.isRepository) {
            // Where git cannot answer, it will refuse the listing, and in the same words.
            found.programs = guard->inspect(repo.url).value_or(QList<RepositoryProgram>());
            // Who chose another folder meanwhile did not open this one.
            if (found.programs.isEmpty() && !control.isAbandoned()) {
                found.recentRepos = recorded(*store, repo.name, path);
            }
        }
        return found;
    };
    auto looking = disk.run(std::move(look));
    FolderLook found = co_await std::move(looking);
    if (!found.isRepository) {
        endOpening(std::nullopt);
        co_return std::nullopt;
    }
    if (!found.programs.isEmpty()) {
        auto asking = ask(Question{repo.name, found.programs});
        const bool isAllowed = co_await std::move(asking);
        if (!isAllowed) {
            co_return std::nullopt;
        }
        m_repositoryGuard->allow(repo.url, found.programs);
        auto record = [store = m_recentReposStore, path = path, name = repo.name](
                          const WorkControl &) { return recorded(*store, name, path); };
        auto recording = disk.run(std::move(record));
        found.recentRepos = co_await std::move(recording);
    }
    endOpening(std::move(found.recentRepos));
    co_return repo;
}

void PickerViewModel::openFolder(const QUrl &folder)
{
    VANTREL_ASSERT_UI_THREAD();
    m_openTask = Job(runOpen(folder));
    StateStep step(*this);
    step.set(m_isOpening, true, &PickerViewModel::isOpeningChanged);
    step.set(m_question, std::optional<Question>(), &PickerViewModel::questionChanged);
    step.publish();
}

void PickerViewModel::openAnyway()
{
    answer(true);
}

void PickerViewModel::cancelOpening()
{
    answer(false);
}

Task<> PickerViewModel::runReload()
{
    SerialWorker disk(SerialWorker::AtEnd::leave);
    auto ask = [store = m_recentReposStore](const WorkControl &) { return store->load(); };
    auto asking = disk.run(std::move(ask));
    QList<RecentRepo> recentRepos = co_await std::move(asking);
    StateStep step(*this);
    step.set(m_recentRepos, std::move(recentRepos), &PickerViewModel::recentReposChanged);
    step.publish();
    lookForRecents();
}

void PickerViewModel::lookForRecents()
{
    for (const RecentRepo &repo : std::as_const(m_recentRepos)) {
        // One that a hanging disk has not answered is still being looked for.
        if (!m_lookTasks.contains(repo.path)) {
            m_lookTasks.start(repo.path, runLook(repo.path));
        }
    }
}

Task<> PickerViewModel::runLook(QString path)
{
    SerialWorker disk(SerialWorker::AtEnd::leave);
    auto look = [store = m_recentReposStore, path](const WorkControl &) {
        return store->isRepository(path);
    };
    auto looking = disk.run(std::move(look));
    const bool isThere = co_await std::move(looking);
    QSet<QString> missingPaths = m_missingPaths;
    if (isThere) {
        missingPaths.remove(path);
    } else {
        missingPaths.insert(path);
    }
    StateStep step(*this);
    step.set(m_missingPaths, std::move(missingPaths), &PickerViewModel::missingReposChanged);
    step.publish();
}

Task<> PickerViewModel::runOpen(QUrl folder)
{
    auto opening = open(folder);
    const std::optional<Repo> repo = co_await std::move(opening);
    if (repo) {
        m_coordinator.openRepository(*repo);
    }
}

Task<bool> PickerViewModel::ask(Question question)
{
    {
        StateStep step(*this);
        step.set(m_isOpening, false, &PickerViewModel::isOpeningChanged);
        step.set(m_question, std::optional(std::move(question)), &PickerViewModel::questionChanged);
        step.publish();
    }
    co_await m_answered.wait();
    co_return m_isAllowed;
}

void PickerViewModel::answer(bool isAllowed)
{
    VANTREL_ASSERT_UI_THREAD();
    m_isAllowed = isAllowed;
    StateStep step(*this);
    step.set(m_isOpening, isAllowed && m_question, &PickerViewModel::isOpeningChanged);
    step.set(m_question, std::optional<Question>(), &PickerViewModel::questionChanged);
    step.publish();
    m_answered.wakeAll();
}

void PickerViewModel::endOpening(std::optional<QList<RecentRepo>> recentRepos)
{
    StateStep step(*this);
    step.set(m_isOpening, false, &PickerViewModel::isOpeningChanged);
    if (recentRepos) {
        // One that is under way may have read the list as it was before this opening.
        m_reloadTask.cancel();
        step.set(m_errorMessage, std::optional<QString>(), &PickerViewModel::errorMessageChanged);
        step.set(m_recentRepos, *std::move(recentRepos), &PickerViewModel::recentReposChanged);
    } else {
        step.set(m_errorMessage, std::optional(u"That folder doesn't contain a .git directory."_s),
                 &PickerViewModel::errorMessageChanged);
        step.announce(&PickerViewModel::refused);
    }
    step.publish();
}

} // namespace vantrel
