#include "app/FileListViewModel.h"

#include "ai/AIResultCache.h"
#include "ai/AIWorker.h"
#include "ai/config/AINotifications.h"
#include "app/AppCoordinator.h"
#include "git/GitWorker.h"
#include "models/DiffText.h"
#include "models/DisplayedHunks.h"
#include "persistence/ChatHistoryStoring.h"
#include "persistence/KeychainAccessNotice.h"
#include "platform/StateStep.h"
#include "platform/jobs/RunQueue.h"

#include <functional>
#include <utility>
#include <variant>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using SummaryState = LoadableState<QString>;

QString hunkText(const RawHunk &hunk)
{
    return hunkDiffText(displayedHunks({hunk}).first());
}

} // namespace

FileListViewModel::FileListViewModel(Repo repo, const ReviewServices &services, QObject *parent)
    : QObject(parent)
    , m_repo(std::move(repo))
    , m_services(services)
    , m_aiResultCache(services.coordinator.aiResultCache())
{
    VANTREL_ASSERT_UI_THREAD();
    m_configChangeTask =
        Job(runConfigChanges(services.notificationCenter.notifications(aiConfigurationDidChange)));
}

FileListViewModel::~FileListViewModel() = default;

QString FileListViewModel::errorMessage() const
{
    return m_errorMessage.value_or(QString());
}

void FileListViewModel::load()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_isLoading) {
        return;
    }
    m_loadTask = Job(runLoad());
    StateStep step(*this);
    step.set(m_isLoading, true, &FileListViewModel::isLoadingChanged);
    step.set(m_progress, ListingProgress(), &FileListViewModel::progressChanged);
    step.publish();
}

void FileListViewModel::openFile(int row)
{
    VANTREL_ASSERT_UI_THREAD();
    if (row < 0 || row >= m_files.size()) {
        return;
    }
    m_services.coordinator.setRoute(
        AppCoordinator::DiffRoute{m_repo, m_files.at(row), m_files, m_changeset,
                                  AppCoordinator::InitialHunkSelection::first});
}

void FileListViewModel::goBack()
{
    VANTREL_ASSERT_UI_THREAD();
    m_services.coordinator.setRoute(AppCoordinator::PickerRoute());
}

void FileListViewModel::cancelAll()
{
    VANTREL_ASSERT_UI_THREAD();
    m_loadTask.cancel();
    m_summaryTasks.cancelAll();
    m_fullPictureTask.cancel();
    m_firstHunkPrefetchTask.cancel();
    m_configChangeTask.cancel();
    StateStep step(*this);
    step.set(m_isLoading, false, &FileListViewModel::isLoadingChanged);
    step.set(m_isNarrativeLoading, false, &FileListViewModel::isNarrativeLoadingChanged);
    step.publish();
}

Task<> FileListViewModel::runLoad()
{
    std::function<void(ListingProgress)> progress = [this](ListingProgress reached) {
        showProgress(reached);
    };
    auto listing = m_services.gitWorker.changedFiles(m_repo.url, std::move(progress));
    const auto files = co_await std::move(listing);
    if (!files) {
        showFailure(files.error());
        co_return;
    }
    auto write = [files = *files](const WorkControl &) { return Changeset(files); };
    auto writing = m_textWorker.run(std::move(write));
    const Changeset changeset = co_await std::move(writing);
    showFiles(*files, changeset);

    auto naming = m_services.gitWorker.currentBranch(m_repo.url);
    const auto branch = co_await std::move(naming);
    // A branch that cannot be read is only hidden: the list is what the person came for.
    showEnd(branch.value_or(std::nullopt));
}

void FileListViewModel::showProgress(const ListingProgress &reached)
{
    StateStep step(*this);
    step.set(m_progress, reached, &FileListViewModel::progressChanged);
    step.publish();
}

void FileListViewModel::showFiles(QList<FileChange> files, const Changeset &changeset)
{
    m_changeset = changeset;
    m_diffTexts.clear();
    for (const ChangesetKey::Entry &entry : changeset.entries) {
        m_diffTexts.insert(entry.path, entry.diffText);
    }
    m_rows.clear();
    for (int row = 0; row < int(files.size()); ++row) {
        FileChange &file = files[row];
        m_rows.insert(file.path, row);
        if (file.hunks.isEmpty()) {
            continue;
        }
        if (auto summary = m_aiResultCache->fileSummary({file.path, m_diffTexts[file.path]})) {
            file.summaryState = SummaryState::loaded(*std::move(summary));
        }
    }
    StateStep step(*this);
    step.set(m_files, std::move(files), &FileListViewModel::filesChanged);
    // With the files, since rows that move when its place appears are clicked amiss.
    announceNarrative(step);
    step.publish();
}

void FileListViewModel::showFailure(const ProcessFailure &failure)
{
    const QString message = u"Couldn't read git status: "_s + failure.description();
    m_changeset = Changeset();
    m_diffTexts.clear();
    m_rows.clear();
    StateStep step(*this);
    step.set(m_files, QList<FileChange>(), &FileListViewModel::filesChanged);
    step.set(m_branch, std::optional<QString>(), &FileListViewModel::branchChanged);
    step.set(m_errorMessage, std::optional<QString>(message),
             &FileListViewModel::errorMessageChanged);
    endLoad(step);
}

void FileListViewModel::showEnd(const std::optional<QString> &branch)
{
    StateStep step(*this);
    step.set(m_branch, branch, &FileListViewModel::branchChanged);
    step.set(m_errorMessage, std::optional<QString>(), &FileListViewModel::errorMessageChanged);
    startFullPicture(step);
    startFirstHunkPrefetch();
    endLoad(step);
}

void FileListViewModel::endLoad(StateStep<FileListViewModel> &step)
{
    step.set(m_hasLoaded, true, &FileListViewModel::hasLoadedChanged);
    step.set(m_isLoading, false, &FileListViewModel::isLoadingChanged);
    m_services.coordinator.setCurrentBranch(m_branch); // For the title bar.
    step.publish();
}

void FileListViewModel::requestSummary(const QString &path)
{
    VANTREL_ASSERT_UI_THREAD();
    const auto row = m_rows.constFind(path);
    const auto diffText = m_diffTexts.constFind(path);
    if (row == m_rows.cend() || diffText == m_diffTexts.cend() ||
        !m_files.at(*row).summaryState.isIdle() || m_summaryTasks.contains(path)) {
        return;
    }
    m_summaryTasks.start(path, runSummary(path, *diffText));
    setSummaryState(path, SummaryState::loading());
}

Task<> FileListViewModel::runSummary(QString path, QString diffText)
{
    co_await m_services.keychainAccessNotice.showIfNeededAndWait();
    auto asking = m_services.aiWorker.summarizeFile(path, diffText);
    const auto summary = co_await std::move(asking);
    if (!summary) {
        setSummaryState(path, SummaryState::failed(summary.error().description()));
        co_return;
    }
    if (summary->trimmed().isEmpty()) {
        AIServiceError error;
        error.kind = AIServiceError::Case::invalidResponse;
        setSummaryState(path, SummaryState::failed(error.description()));
        co_return;
    }
    m_aiResultCache->setFileSummary({path, diffText}, *summary);
    setSummaryState(path, SummaryState::loaded(*summary));
}

void FileListViewModel::setSummaryState(const QString &path, SummaryState state)
{
    const auto row = m_rows.constFind(path);
    if (row == m_rows.cend() || m_files.at(*row).summaryState == state) {
        return;
    }
    m_files[*row].summaryState = std::move(state);
    Q_EMIT summaryChanged(*row);
}

void FileListViewModel::retryFailedSummaries()
{
    VANTREL_ASSERT_UI_THREAD();
    QStringList paths;
    for (const FileChange &file : std::as_const(m_files)) {
        const QString *const message = file.summaryState.message();
        if (message != nullptr && isAIServiceErrorSentence(*message)) {
            paths.append(file.path);
        }
    }
    for (const QString &path : std::as_const(paths)) {
        setSummaryState(path, SummaryState::idle());
    }
    for (const QString &path : std::as_const(paths)) {
        requestSummary(path);
    }
}

void FileListViewModel::startFullPicture(StateStep<FileListViewModel> &step)
{
    if (m_fullPictureTask.isActive()) {
        return;
    }
    if (announceNarrative(step)) {
        m_fullPictureTask = Job(runFullPicture(m_changeset));
    }
}

bool FileListViewModel::announceNarrative(StateStep<FileListViewModel> &step)
{
    const auto finished = m_aiResultCache->finishedChangesetSummary(m_changeset.key);
    const bool isMissing = !finished && !m_changeset.entries.isEmpty();
    step.set(m_narrative, finished.value_or(QString()), &FileListViewModel::narrativeChanged);
    step.set(m_isNarrativeLoading, isMissing, &FileListViewModel::isNarrativeLoadingChanged);
    return isMissing;
}

Task<> FileListViewModel::runFullPicture(Changeset changeset)
{
    // One that a diff screen has asked for is waited for, and not asked for again.
    auto making = changesetNarrative(m_aiResultCache, changeset, &m_services.aiWorker,
                                     &m_services.keychainAccessNotice);
    co_await std::move(making);
    // The list may have been loaded anew meanwhile, and be another change set.
    const auto finished = m_aiResultCache->finishedChangesetSummary(m_changeset.key);
    StateStep step(*this);
    step.set(m_narrative, finished.value_or(QString()), &FileListViewModel::narrativeChanged);
    step.set(m_isNarrativeLoading, false, &FileListViewModel::isNarrativeLoadingChanged);
    step.publish();
}

void FileListViewModel::startFirstHunkPrefetch()
{
    if (!m_firstHunkPrefetchTask.isActive() && !m_changeset.entries.isEmpty()) {
        m_firstHunkPrefetchTask = Job(runFirstHunkPrefetch(m_files, m_changeset));
    }
}

Task<> FileListViewModel::runFirstHunkPrefetch(QList<FileChange> files, Changeset changeset)
{
    co_await m_services.chatHistoryStore.whenLoaded();
    for (const FileChange &file : std::as_const(files)) {
        if (file.hunks.isEmpty()) {
            continue;
        }
        auto write = [hunk = file.hunks.first()](const WorkControl &) { return hunkText(hunk); };
        auto writing = m_textWorker.run(std::move(write));
        HunkKey key;
        key.filePath = file.path;
        key.diffText = co_await std::move(writing);
        if (m_aiResultCache->hunkExplanation(key)) {
            continue;
        }
        const auto thread = m_services.chatHistoryStore.thread(key.filePath, key.diffText);
        if (!thread || !thread->explanation) {
            auto explaining = explainInAdvance(key, changeset);
            co_await std::move(explaining);
            co_return;
        }
        m_aiResultCache->setHunkExplanation(key, *thread->explanation);
    }
}

Task<> FileListViewModel::explainInAdvance(HunkKey key, Changeset changeset)
{
    auto making = changesetNarrative(m_aiResultCache, changeset, &m_services.aiWorker,
                                     &m_services.keychainAccessNotice);
    const QString narrative = co_await std::move(making);
    co_await m_services.keychainAccessNotice.showIfNeededAndWait();
    ExplanationStream events =
        m_services.aiWorker.explainHunk(key.filePath, key.diffText, narrative);
    while (const auto event = co_await events.next()) {
        if (!*event) {
            co_return; // The diff screen asks again, and tells the failure.
        }
        if (const auto *const completed = std::get_if<ExplanationCompleted>(&**event)) {
            m_aiResultCache->setHunkExplanation(key, completed->explanation);
            co_return;
        }
    }
}

Task<> FileListViewModel::runConfigChanges(NotificationCenter::Stream notifications)
{
    while (const auto notification = co_await notifications.next()) {
        retryFailedSummaries();
    }
}

} // namespace vantrel
