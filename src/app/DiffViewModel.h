#pragma once

#include "ai/HunkExplanationStreamEvent.h"
#include "app/AppCoordinator.h"
#include "app/ChatThreadViewModel.h"
#include "app/ReviewServices.h"
#include "git/ProcessRunnerError.h"
#include "models/Hunk.h"
#include "platform/NotificationCenter.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/JobMap.h"
#include "platform/jobs/SerialWorker.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <map>
#include <memory>
#include <optional>

namespace vantrel {

class AIResultCache;
struct HunkKey;
template<typename Object>
class StateStep;

/// One file's hunks side by side, the selected hunk, the explanations as they stream in, and the
/// conversations about hunks. Thread: interface.
class DiffViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int hunkCount READ hunkCount NOTIFY hunksChanged)
    Q_PROPERTY(int selectedHunkIndex READ selectedHunkIndex NOTIFY selectedHunkIndexChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool canGoPrevious READ canGoPrevious NOTIFY canGoChanged)
    Q_PROPERTY(bool canGoNext READ canGoNext NOTIFY canGoChanged)

public:
    /// The services must outlive the view model, which keeps what the model says in the
    /// coordinator's present cache. Nothing is loaded yet; changes of the configuration are heard
    /// from now on.
    DiffViewModel(AppCoordinator::DiffRoute route, const ReviewServices &services,
                  QObject *parent = nullptr);
    ~DiffViewModel() override;

    [[nodiscard]] const FileChange &file() const { return m_route.file; }
    [[nodiscard]] const QList<Hunk> &hunks() const { return m_hunks; }
    [[nodiscard]] int hunkCount() const { return int(m_hunks.size()); }
    [[nodiscard]] int selectedHunkIndex() const { return m_selectedHunkIndex; }
    [[nodiscard]] const Hunk *selectedHunk() const; ///< Null when the index is out of range.
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] QString errorMessage() const; ///< Empty when the hunks could be read.

    /// The prose received so far for a hunk that is being explained; nothing before the first
    /// piece. A copy of its own: a shared one would make the next piece copy the whole text.
    [[nodiscard]] std::optional<QString> streamingExplanationText(int hunkIndex) const;

    /// The same text without a copy, valid until the next change of this explanation.
    [[nodiscard]] std::optional<QStringView> streamingExplanationView(int hunkIndex) const;
    [[nodiscard]] bool isExplanationProseFinished(int hunkIndex) const;

    /// The conversation about a hunk, made on first use and owned by this object until the next
    /// load; null when there is no such hunk.
    Q_INVOKABLE vantrel::ChatThreadViewModel *chatViewModel(int hunkIndex);

    /// The neighbours of the shown file in the listing, or null.
    [[nodiscard]] const FileChange *previousFile() const;
    [[nodiscard]] const FileChange *nextFile() const;
    [[nodiscard]] bool canGoPrevious() const;
    [[nodiscard]] bool canGoNext() const;

    /// Builds the hunks, shows what is known of them, selects the initial one and explains it, and
    /// then the others one after another; one load at a time.
    Q_INVOKABLE void load();
    Q_INVOKABLE void select(int hunkIndex);
    Q_INVOKABLE void selectNext();
    Q_INVOKABLE void selectPrevious();

    /// Steps to the next or previous hunk, across files at the ends of this one.
    Q_INVOKABLE void goNext();
    Q_INVOKABLE void goPrevious();

    /// Goes back to the file list.
    Q_INVOKABLE void goBack();

    /// Ends every job. What was published stays, but for `isLoading`: a cancelled load has ended.
    Q_INVOKABLE void cancelAll();

Q_SIGNALS:
    void hunksChanged();                    ///< The set of hunks is a new one.
    void explanationChanged(int hunkIndex); ///< State, streamed prose or its end.
    void selectedHunkIndexChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void canGoChanged();

private:
    struct CanGo
    {
        bool previous = false;
        bool next = false;

        bool operator==(const CanGo &) const = default;
    };

    /// What a worker makes of raw hunks.
    struct LaidOut
    {
        QList<Hunk> hunks{};
        QStringList texts{}; ///< Of each hunk, see `hunkDiffText`.
    };

    Task<> runLoad();
    void showLoadFailure(const ProcessFailure &failure);
    void showHunks(LaidOut laidOut);
    void seedExplanations(LaidOut &laidOut);

    /// Starts the job that explains an idle hunk; false when there is nothing to start. The caller
    /// sends `explanationChanged` once its step is complete.
    bool startExplanation(int hunkIndex);
    Task<> runExplanation(int hunkIndex);
    void showProse(int hunkIndex, const HunkExplanationStreamEvent &event);
    void showExplanation(int hunkIndex, const HunkExplanation &explanation);
    void endExplanation(int hunkIndex, LoadableState<HunkExplanation> state);
    void startBackgroundRun();
    Task<> runBackground(QList<int> hunkIndices);

    /// The narrative of the listing's change set.
    Task<QString> narrative();

    Task<> runConfigChanges(NotificationCenter::Stream notifications);
    void retryFailedExplanations();
    void clearServiceErrors();

    [[nodiscard]] bool isHunk(int index) const;
    [[nodiscard]] CanGo canGo() const;
    [[nodiscard]] HunkKey hunkKey(int index) const;
    void setSelectedHunk(StateStep<DiffViewModel> &step, int hunkIndex);
    void openFile(const FileChange &file, AppCoordinator::InitialHunkSelection selection);

    AppCoordinator::DiffRoute m_route;
    ReviewServices m_services;
    std::shared_ptr<AIResultCache> m_aiResultCache;
    qsizetype m_fileIndex; ///< The shown file's place in the listing, or -1.
    QList<Hunk> m_hunks{};
    QStringList m_hunkTexts{}; ///< Of each of `m_hunks`.
    int m_selectedHunkIndex = 0;
    bool m_isLoading = false;
    std::optional<QString> m_errorMessage{};
    QHash<int, QString> m_streamingExplanationText{};
    QSet<int> m_explanationProseFinished{};

    /// Lays out hunks and writes their texts, which takes longer than a frame for large files. Left
    /// alone at the end, so that leaving a large file does not wait for it.
    SerialWorker m_layoutWorker{SerialWorker::AtEnd::leave};
    JobMap<int> m_explanationTasks{}; ///< By hunk, and the background run under a key of its own.
    std::map<int, std::unique_ptr<ChatThreadViewModel>> m_chatViewModels{};
    Job m_loadTask{};
    Job m_configChangeTask{};
};

} // namespace vantrel
