#pragma once

#include "git/RepositoryProgram.h"
#include "models/RecentRepo.h"
#include "models/Repo.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/JobMap.h"
#include "platform/jobs/WaiterList.h"

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
class RepositoryGuarding;

/// The first screen: turns a folder that the person chose into the open repository, and keeps the
/// recent ones. Before a repository is opened whose own configuration names programs for its
/// reading, the person is asked. Each question to the disk has a thread of its own, so that a disk
/// that never answers holds up neither a later question nor the end of the application. Thread:
/// interface.
class PickerViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool isOpening READ isOpening NOTIFY isOpeningChanged)
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY questionChanged)

public:
    /// Whether to open a repository although git will then run these programs of its configuration.
    struct Question
    {
        QString repositoryName{};
        QList<RepositoryProgram> programs{};

        bool operator==(const Question &) const = default;
    };

    /// Begins to load the recent repositories. The store and the guard are shared with a question
    /// that is left behind; the coordinator must outlive the view model.
    PickerViewModel(std::shared_ptr<RecentReposStoring> recentReposStore,
                    std::shared_ptr<RepositoryGuarding> repositoryGuard,
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

    /// Nothing has been read of the repository that the person is asked about.
    [[nodiscard]] const std::optional<Question> &question() const { return m_question; }
    [[nodiscard]] bool isAsking() const { return m_question.has_value(); }

    /// Answers later. A newer call replaces one that has not been answered.
    void reloadRecents();

    /// The repository at `url`, which then is the newest recent one. Nothing, and an error message,
    /// when the folder holds no `.git` entry; a file will do, as a linked worktree has it. Nothing
    /// also when the person was asked and does not want it opened.
    Task<std::optional<Repo>> open(QUrl url);

    /// Opens `folder` and goes on to its changed files. Answers later; a newer call replaces one
    /// that has not been answered.
    Q_INVOKABLE void openFolder(const QUrl &folder);

    /// The answers to the question. The first lets the programs run from now on.
    Q_INVOKABLE void openAnyway();
    Q_INVOKABLE void cancelOpening();

Q_SIGNALS:
    void recentReposChanged();
    void missingReposChanged();
    void errorMessageChanged();
    void refused(); ///< A folder was not opened, be it for the same reason as the one before.
    void isOpeningChanged();
    void questionChanged();

private:
    Task<> runReload();
    Task<> runOpen(QUrl folder);

    /// Looks whether the repositories are still there. Each has a thread of its own.
    void lookForRecents();
    Task<> runLook(QString path);

    /// Shows the question and waits for its answer: whether to open the repository.
    Task<bool> ask(Question question);
    void answer(bool isAllowed);

    /// What the disk has answered: the recent repositories after the opening, or none for a folder
    /// without `.git` entry.
    void endOpening(std::optional<QList<RecentRepo>> recentRepos);

    std::shared_ptr<RecentReposStoring> m_recentReposStore;
    std::shared_ptr<RepositoryGuarding> m_repositoryGuard;
    AppCoordinator &m_coordinator;
    QList<RecentRepo> m_recentRepos{};
    QSet<QString> m_missingPaths{};
    std::optional<QString> m_errorMessage{};
    bool m_isOpening = false;
    std::optional<Question> m_question{};
    bool m_isAllowed = false; ///< The last answer.
    WaiterList m_answered{};
    Job m_reloadTask{};
    Job m_openTask{};
    JobMap<QString> m_lookTasks{};
};

} // namespace vantrel
