#include "app/RootViewModel.h"

#include "platform/jobs/RunQueue.h"

#include <utility>
#include <variant>

namespace vantrel {

namespace {

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

RootViewModel::RootViewModel(const ReviewServices &services,
                             std::shared_ptr<RecentReposStoring> recentReposStore,
                             std::shared_ptr<RepositoryGuarding> repositoryGuard,
                             SettingsViewModel &settings, AISetupSheet &setup,
                             SoftwareUpdating *softwareUpdater, QObject *parent)
    : QObject(parent)
    , m_services(services)
    , m_settings(settings)
    , m_setup(setup)
    , m_softwareUpdater(softwareUpdater)
    , m_picker(std::move(recentReposStore), std::move(repositoryGuard), services.coordinator)
{
    connect(&services.coordinator, &AppCoordinator::routeChanged, this, &RootViewModel::showRoute);
    connect(&setup, &AISetupSheet::viewModelChanged, this, &RootViewModel::openWaitingFolder);
    connect(&services.keychainAccessNotice, &KeychainAccessNotice::isShowingNoticeChanged, this,
            &RootViewModel::openWaitingFolder);
    showRoute();
}

RootViewModel::~RootViewModel() = default;

void RootViewModel::openFolder(const QUrl &folder)
{
    VANTREL_ASSERT_UI_THREAD();
    m_picker.openFolder(folder);
}

void RootViewModel::openFolderInTurn(const QUrl &folder)
{
    VANTREL_ASSERT_UI_THREAD();
    m_waitingFolder = folder;
    openWaitingFolder();
}

void RootViewModel::openWaitingFolder()
{
    const bool isScreenInFront =
        m_setup.viewModel() == nullptr && !keychainAccessNotice()->isShowingNotice();
    if (!isScreenInFront) {
        return;
    }
    if (const std::optional<QUrl> folder = std::exchange(m_waitingFolder, std::nullopt)) {
        openFolder(*folder);
    }
}

void RootViewModel::showRoute()
{
    FileListViewModel *const formerFileList = std::exchange(m_fileList, nullptr);
    DiffViewModel *const formerDiff = std::exchange(m_diff, nullptr);
    const AppCoordinator::Route &route = m_services.coordinator.route();
    if (const auto *const files = std::get_if<AppCoordinator::FilesRoute>(&route)) {
        m_fileList = new FileListViewModel(files->repo, m_services, this);
    } else if (const auto *const diff = std::get_if<AppCoordinator::DiffRoute>(&route)) {
        m_diff = new DiffViewModel(*diff, m_services, this);
    } else {
        m_picker.reloadRecents();
    }
    drop(formerFileList);
    drop(formerDiff);
    if (m_fileList != formerFileList || m_diff != formerDiff) {
        Q_EMIT screenChanged();
    }
}

} // namespace vantrel
