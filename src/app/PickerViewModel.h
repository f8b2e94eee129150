#pragma once

#include "models/RecentRepo.h"
#include "models/Repo.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/JobMap.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

namespace vantrel {

class AppCoordinator;
class RecentReposStoring;

/// The first screen: turns a folder that the person chose into the open repository, and keeps the
/// recent ones. Each question to the disk has a thread of its own, so that a disk that never
/// answers holds up neither a later question nor the end of the application. Thread: interface.
class PickerViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool isOpening READ isOpening NOTIFY isOpeningChanged)

public:
    /// Begins to load the recent repositories. The store is shared with a question that is left
    /// behind; the coordinator must outlive the view model.
    PickerViewModel(std::shared_ptr<RecentReposStoring> recentReposStore,
                    AppCoordinator &coordinator, QObject *parent = nullptr);

    /// Newest first.
    [[nodiscard]] const QList<RecentRepo> &recentRepos() const { return m_recentRepos; }

    /// Whether the disk has answered that there is no repository at this path any more. Only recent
    /// ones are looked for, whenever they are loaded.
    [[nodiscard]] bool isMissing(const QString &path) const
    {
        return m_missingPaths.contains(path);
    }

    /// Why the last folder was not opened; empty after one that was.
    [[nodiscard]] QString errorMessage() const;

    /// A folder was chosen and the disk has not answered yet.
    [[nodiscard]] bool isOpening() const { return m_isOpening; }

    /// Answers later. A newer call replaces one that has not been answered.
    void reloadRecents();

    /// The repository at `url`, which then is the newest recent one. Nothing, and an error message,
    /// when the folder holds no `.git` entry; a file will do, as a linked worktree has it.
    Task<std::optional<Repo>> open(QUrl url);

    /// Opens `folder` and goes on to its changed files. Answers later; a newer call replaces one
    /// that has not been answered.
    Q_INVOKABLE void openFolder(const QUrl &folder);

Q_SIGNALS:
    void recentReposChanged();
    void missingReposChanged();
    void errorMessageChanged();
    void refused(); ///< A folder was not opened, be it for the same reason as the one before.
    void isOpeningChanged();

private:
    Task<> runReload();
    Task<> runOpen(QUrl folder);

    /// Looks whether the repositories are still there. Each has a thread of its own.
    void lookForRecents();
    Task<> runLook(QString path);

    /// What the disk has answered: the recent repositories after the opening, or none for a folder
    /// without `.git` entry.
    void endOpening(std::optional<QList<RecentRepo>> recentRepos);

    std::shared_ptr<RecentReposStoring> m_recentReposStore;
    AppCoordinator &m_coordinator;
    QList<RecentRepo> m_recentRepos{};
    QSet<QString> m_missingPaths{};
    std::optional<QString> m_errorMessage{};
    bool m_isOpening = false;
    Job m_reloadTask{};
    Job m_openTask{};
    JobMap<QString> m_lookTasks{};
};

} // namespace vantrel
