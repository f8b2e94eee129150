#pragma once

#include "git/GitServicing.h"
#include "models/FileChange.h"
#include "models/Repo.h"
#include "platform/jobs/Job.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace vantrel {

class AppCoordinator;
class GitWorker;
template<typename Object>
class StateStep;

/// The list of a repository's uncommitted changes. Thread: interface.
class FileListViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool hasLoaded READ hasLoaded NOTIFY hasLoadedChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(int finishedFiles READ finishedFiles NOTIFY progressChanged)
    Q_PROPERTY(int totalFiles READ totalFiles NOTIFY progressChanged)

public:
    /// The references must outlive the view model. Nothing is loaded yet.
    FileListViewModel(Repo repo, GitWorker &gitWorker, AppCoordinator &coordinator,
                      QObject *parent = nullptr);
    ~FileListViewModel() override;

    [[nodiscard]] const QList<FileChange> &files() const { return m_files; }
    [[nodiscard]] const std::optional<QString> &branch() const { return m_branch; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] bool hasLoaded() const { return m_hasLoaded; } ///< A load has ended, either way.
    [[nodiscard]] QString errorMessage() const; ///< Empty when the last load succeeded.
    [[nodiscard]] int finishedFiles() const { return int(m_progress.finishedFiles); }
    [[nodiscard]] int totalFiles() const { return int(m_progress.totalFiles); }

    /// Loads the files and the branch, which the coordinator is told too; one load at a time.
    Q_INVOKABLE void load();

    /// Opens the file of this row on its first hunk; nothing for a row that is not there.
    Q_INVOKABLE void openFile(int row);

    /// Goes back to the picker.
    Q_INVOKABLE void goBack();

    /// Ends every job. What was published stays, but for `isLoading`: a cancelled load has ended.
    Q_INVOKABLE void cancelAll();

Q_SIGNALS:
    void filesChanged();
    void branchChanged();
    void isLoadingChanged();
    void hasLoadedChanged();
    void errorMessageChanged();
    void progressChanged();

private:
    Task<> runLoad();
    void showProgress(const ListingProgress &reached);
    void showFiles(const QList<FileChange> &files);
    void showFailure(const ProcessFailure &failure);
    void showEnd(const std::optional<QString> &branch);
    void endLoad(StateStep<FileListViewModel> &step);

    Repo m_repo;
    GitWorker &m_gitWorker;
    AppCoordinator &m_coordinator;
    QList<FileChange> m_files{};
    std::optional<QString> m_branch{};
    std::optional<QString> m_errorMessage{};
    ListingProgress m_progress{};
    bool m_isLoading = false;
    bool m_hasLoaded = false;
    Job m_loadTask{};
};

} // namespace vantrel
