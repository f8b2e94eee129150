#pragma once

#include "app/ChangesetNarrative.h"
#include "app/ReviewServices.h"
#include "git/GitServicing.h"
#include "models/FileChange.h"
#include "models/Repo.h"
#include "platform/NotificationCenter.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/JobMap.h"
#include "platform/jobs/SerialWorker.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace vantrel {

class AIResultCache;
struct HunkKey;
template<typename Object>
class StateStep;

/// The list of a repository's uncommitted changes, with a sentence on each file and the narrative
/// of the whole. Thread: interface.
class FileListViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool hasLoaded READ hasLoaded NOTIFY hasLoadedChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(int finishedFiles READ finishedFiles NOTIFY progressChanged)
    Q_PROPERTY(int totalFiles READ totalFiles NOTIFY progressChanged)
    Q_PROPERTY(QString narrative READ narrative NOTIFY narrativeChanged)
    Q_PROPERTY(bool isNarrativeLoading READ isNarrativeLoading NOTIFY isNarrativeLoadingChanged)

public:
    /// The services must outlive the view model, which keeps what the model says in the
    /// coordinator's present cache. Nothing is loaded yet; changes of the configuration are heard
    /// from now on.
    FileListViewModel(Repo repo, const ReviewServices &services, QObject *parent = nullptr);
    ~FileListViewModel() override;

    /// Each with the state of its summary.
    [[nodiscard]] const QList<FileChange> &files() const { return m_files; }
    [[nodiscard]] const std::optional<QString> &branch() const { return m_branch; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] bool hasLoaded() const { return m_hasLoaded; } ///< A load has ended, either way.
    [[nodiscard]] QString errorMessage() const; ///< Empty when the last load succeeded.
    [[nodiscard]] int finishedFiles() const { return int(m_progress.finishedFiles); }
    [[nodiscard]] int totalFiles() const { return int(m_progress.totalFiles); }

    /// The full picture; empty until it is made, and when the model could not be asked.
    [[nodiscard]] const QString &narrative() const { return m_narrative; }
    [[nodiscard]] bool isNarrativeLoading() const { return m_isNarrativeLoading; }

    /// Loads the files and the branch, which the coordinator is told too; one load at a time. Then
    /// asks for the full picture and for the first explanation that will be needed.
    Q_INVOKABLE void load();

    /// Asks for the summary of the file at `path`, once: for a row that comes into view.
    Q_INVOKABLE void requestSummary(const QString &path);

    /// Asks again for the summaries that failed for a reason that the configuration may mend.
    void retryFailedSummaries();

    /// Opens the file of this row on its first hunk; nothing for a row that is not there.
    Q_INVOKABLE void openFile(int row);

    /// Goes back to the picker.
    Q_INVOKABLE void goBack();

    /// Ends every job. What was published stays, but for the two flags of work that has ended so.
    Q_INVOKABLE void cancelAll();

Q_SIGNALS:
    void filesChanged();
    void summaryChanged(int row);
    void branchChanged();
    void isLoadingChanged();
    void hasLoadedChanged();
    void errorMessageChanged();
    void progressChanged();
    void narrativeChanged();
    void isNarrativeLoadingChanged();

private:
    Task<> runLoad();
    void showProgress(const ListingProgress &reached);
    void showFiles(QList<FileChange> files, const Changeset &changeset);
    void showFailure(const ProcessFailure &failure);
    void showEnd(const std::optional<QString> &branch);
    void endLoad(StateStep<FileListViewModel> &step);

    Task<> runSummary(QString path, QString diffText);
    void setSummaryState(const QString &path, LoadableState<QString> state);

    void startFullPicture(StateStep<FileListViewModel> &step);

    /// Shows the narrative of the listing or that there will be one; true when it is missing.
    bool announceNarrative(StateStep<FileListViewModel> &step);
    Task<> runFullPicture(Changeset changeset);

    void startFirstHunkPrefetch();
    Task<> runFirstHunkPrefetch(QList<FileChange> files, Changeset changeset);
    Task<> explainInAdvance(HunkKey key, Changeset changeset);

    Task<> runConfigChanges(NotificationCenter::Stream notifications);

    Repo m_repo;
    ReviewServices m_services;
    std::shared_ptr<AIResultCache> m_aiResultCache;
    QList<FileChange> m_files{};
    QHash<QString, int> m_rows{};          ///< Of each path in `m_files`.
    QHash<QString, QString> m_diffTexts{}; ///< Of each path with hunks, see `fileDiffText`.
    Changeset m_changeset{};               ///< Of `m_files`.
    std::optional<QString> m_branch{};
    std::optional<QString> m_errorMessage{};
    ListingProgress m_progress{};
    QString m_narrative{};
    bool m_isNarrativeLoading = false;
    bool m_isLoading = false;
    bool m_hasLoaded = false;

    /// Writes the texts of the change set, which takes longer than a frame for large ones. Left
    /// alone at the end, so that leaving the screen does not wait for it.
    SerialWorker m_textWorker{SerialWorker::AtEnd::leave};
    Job m_loadTask{};
    JobMap<QString> m_summaryTasks{};
    Job m_configChangeTask{};
    Job m_fullPictureTask{};
    Job m_firstHunkPrefetchTask{};
};

} // namespace vantrel
