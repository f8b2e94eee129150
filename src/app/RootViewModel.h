#pragma once

#include "app/AppCoordinator.h"
#include "app/DiffViewModel.h"
#include "app/FileListViewModel.h"
#include "app/PickerViewModel.h"
#include "app/ReviewServices.h"
#include "app/SettingsViewModel.h"
#include "onboarding/AISetupSheet.h"
#include "persistence/KeychainAccessNotice.h"
#include "updates/SoftwareUpdating.h"

#include <QObject>
#include <QUrl>

#include <memory>
#include <optional>

namespace vantrel {

class RecentReposStoring;
class RepositoryGuarding;

/// What fills the main window: the view model of the coordinator's route, made with the services
/// that it needs and dropped when the route changes. The picker's stays, since a folder can be
/// opened from everywhere. Thread: interface.
class RootViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(vantrel::AppCoordinator *coordinator READ coordinator CONSTANT)
    Q_PROPERTY(vantrel::PickerViewModel *picker READ picker CONSTANT)
    Q_PROPERTY(vantrel::FileListViewModel *fileList READ fileList NOTIFY screenChanged)
    Q_PROPERTY(vantrel::DiffViewModel *diff READ diff NOTIFY screenChanged)
    Q_PROPERTY(
        vantrel::KeychainAccessNotice *keychainAccessNotice READ keychainAccessNotice CONSTANT)
    Q_PROPERTY(vantrel::SettingsViewModel *settings READ settings CONSTANT)
    Q_PROPERTY(vantrel::AISetupSheet *setup READ setup CONSTANT)
    Q_PROPERTY(vantrel::SoftwareUpdating *softwareUpdater READ softwareUpdater CONSTANT)

public:
    /// The services, the settings, the setup sheet and the updater, which is null when updates are
    /// not configured, must outlive the view model. Shows the coordinator's route at once.
    RootViewModel(const ReviewServices &services,
                  std::shared_ptr<RecentReposStoring> recentReposStore,
                  std::shared_ptr<RepositoryGuarding> repositoryGuard, SettingsViewModel &settings,
                  AISetupSheet &setup, SoftwareUpdating *softwareUpdater = nullptr,
                  QObject *parent = nullptr);
    ~RootViewModel() override;

    [[nodiscard]] AppCoordinator *coordinator() const { return &m_services.coordinator; }
    [[nodiscard]] KeychainAccessNotice *keychainAccessNotice() const
    {
        return &m_services.keychainAccessNotice;
    }

    /// What the settings window shows, which has no route.
    [[nodiscard]] SettingsViewModel *settings() const { return &m_settings; }

    [[nodiscard]] AISetupSheet *setup() const { return &m_setup; }

    /// Null unless this build is configured for updates.
    [[nodiscard]] SoftwareUpdating *softwareUpdater() const { return m_softwareUpdater; }

    /// Its recent repositories are loaded again whenever the route becomes the picker.
    [[nodiscard]] PickerViewModel *picker() { return &m_picker; }

    /// Null unless the route is the one of that screen. Nothing is loaded yet: the screen does that
    /// when it appears.
    [[nodiscard]] FileListViewModel *fileList() const { return m_fileList; }
    [[nodiscard]] DiffViewModel *diff() const { return m_diff; }

    /// As the picker's.
    Q_INVOKABLE void openFolder(const QUrl &folder);

    /// The same for a folder that was chosen outside the window: it waits while the setup or the
    /// keychain notice lies over the screen, as the person cannot choose one then either. Of
    /// several that wait the last one is opened.
    void openFolderInTurn(const QUrl &folder);

Q_SIGNALS:
    void screenChanged();

private:
    void showRoute();
    void openWaitingFolder();

    ReviewServices m_services;
    SettingsViewModel &m_settings;
    AISetupSheet &m_setup;
    SoftwareUpdating *m_softwareUpdater = nullptr;
    FileListViewModel *m_fileList = nullptr; ///< A child of this object, as the next.
    DiffViewModel *m_diff = nullptr;
    PickerViewModel m_picker;
    std::optional<QUrl> m_waitingFolder{};
};

} // namespace vantrel
