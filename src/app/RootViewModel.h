#pragma once

#include "app/AppCoordinator.h"
#include "app/DiffViewModel.h"
#include "app/FileListViewModel.h"
#include "persistence/KeychainAccessNotice.h"
#include "platform/jobs/Job.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace vantrel {

class AIWorker;
class GitWorker;
class NotificationCenter;

/// What fills the main window: the view model of the coordinator's route, made with the services
/// that it needs and dropped when the route changes. Thread: interface.
class RootViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(vantrel::AppCoordinator *coordinator READ coordinator CONSTANT)
    Q_PROPERTY(vantrel::FileListViewModel *fileList READ fileList NOTIFY screenChanged)
    Q_PROPERTY(vantrel::DiffViewModel *diff READ diff NOTIFY screenChanged)
    Q_PROPERTY(
        vantrel::KeychainAccessNotice *keychainAccessNotice READ keychainAccessNotice CONSTANT)
    Q_PROPERTY(QString refusal READ refusal NOTIFY refusalChanged)
    Q_PROPERTY(bool isOpening READ isOpening NOTIFY isOpeningChanged)

public:
    /// The references must outlive the view model. Shows the coordinator's route at once.
    RootViewModel(AppCoordinator &coordinator, GitWorker &gitWorker, AIWorker &aiWorker,
                  KeychainAccessNotice &keychainAccessNotice,
                  NotificationCenter &notificationCenter, QObject *parent = nullptr);
    ~RootViewModel() override;

    [[nodiscard]] AppCoordinator *coordinator() const { return &m_coordinator; }
    [[nodiscard]] KeychainAccessNotice *keychainAccessNotice() const
    {
        return &m_keychainAccessNotice;
    }

    /// Null unless the route is the one of that screen. Nothing is loaded yet: the screen does that
    /// when it appears.
    [[nodiscard]] FileListViewModel *fileList() const { return m_fileList; }
    [[nodiscard]] DiffViewModel *diff() const { return m_diff; }

    /// Why the last folder was not opened; empty after one that was.
    [[nodiscard]] QString refusal() const;

    /// A folder was chosen and the disk has not answered yet.
    [[nodiscard]] bool isOpening() const { return m_isOpening; }

    /// Opens `folder` when it holds a `.git` entry, file or folder, else sets `refusal`. Answers
    /// later, since the disk may be slow; a newer call replaces one that has not been answered.
    Q_INVOKABLE void openFolder(const QUrl &folder);

Q_SIGNALS:
    void screenChanged();
    void refusalChanged();
    void isOpeningChanged();

private:
    void showRoute();
    Task<> runOpenFolder(QUrl folder);
    void endOpening(std::optional<QString> refusal);

    AppCoordinator &m_coordinator;
    GitWorker &m_gitWorker;
    AIWorker &m_aiWorker;
    KeychainAccessNotice &m_keychainAccessNotice;
    NotificationCenter &m_notificationCenter;
    FileListViewModel *m_fileList = nullptr; ///< A child of this object, as the next.
    DiffViewModel *m_diff = nullptr;
    std::optional<QString> m_refusal{};
    bool m_isOpening = false;
    Job m_openTask{};
};

} // namespace vantrel
