#include "app/DiffViewModel.h"

#include "ai/AIWorker.h"
#include "ai/config/AINotifications.h"
#include "app/StateStep.h"
#include "git/GitWorker.h"
#include "models/DiffText.h"
#include "models/DisplayedHunks.h"
#include "persistence/KeychainAccessNotice.h"
#include "platform/jobs/RunQueue.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The shown file's place in the listing, or -1 when it is not there.
qsizetype indexOfFile(const AppCoordinator::DiffRoute &route)
{
    const auto found =
        std::find_if(route.allFiles.cbegin(), route.allFiles.cend(),
                     [&](const FileChange &file) { return file.path == route.file.path; });
    return found == route.allFiles.cend() ? -1 : found - route.allFiles.cbegin();
}

bool isFailureOfService(const LoadableState<HunkExplanation> &state)
{
    return state.isFailed() && isAIServiceErrorSentence(*state.message());
}

} // namespace

DiffViewModel::DiffViewModel(AppCoordinator::DiffRoute route, GitWorker &gitWorker,
                             AIWorker &aiWorker, KeychainAccessNotice &keychainAccessNotice,
                             AppCoordinator &coordinator, NotificationCenter &notificationCenter,
                             QObject *parent)
    : QObject(parent)
    , m_route(std::move(route))
    , m_gitWorker(gitWorker)
    , m_aiWorker(aiWorker)
    , m_keychainAccessNotice(keychainAccessNotice)
    , m_coordinator(coordinator)
    , m_fileIndex(indexOfFile(m_route))
{
    VANTREL_ASSERT_UI_THREAD();
    m_configChangeTask =
        Job(runConfigChanges(notificationCenter.notifications(aiConfigurationDidChange)));
}

DiffViewModel::~DiffViewModel() = default;

const Hunk *DiffViewModel::selectedHunk() const
{
    return isHunk(m_selectedHunkIndex) ? &m_hunks.at(m_selectedHunkIndex) : nullptr;
}

QString DiffViewModel::errorMessage() const
{
    return m_errorMessage.value_or(QString());
}

std::optional<QString> DiffViewModel::streamingExplanationText(int hunkIndex) const
{
    const std::optional<QStringView> text = streamingExplanationView(hunkIndex);
    return text ? std::optional(text->toString()) : std::nullopt;
}

std::optional<QStringView> DiffViewModel::streamingExplanationView(int hunkIndex) const
{
    const auto found = m_streamingExplanationText.constFind(hunkIndex);
    if (found == m_streamingExplanationText.cend()) {
        return std::nullopt;
    }
    return QStringView(*found);
}

bool DiffViewModel::isExplanationProseFinished(int hunkIndex) const
{
    return m_explanationProseFinished.contains(hunkIndex);
}

const FileChange *DiffViewModel::previousFile() const
{
    return m_fileIndex > 0 ? &m_route.allFiles.at(m_fileIndex - 1) : nullptr;
}

const FileChange *DiffViewModel::nextFile() const
{
    const bool hasNext = m_fileIndex >= 0 && m_fileIndex + 1 < m_route.allFiles.size();
    return hasNext ? &m_route.allFiles.at(m_fileIndex + 1) : nullptr;
}

bool DiffViewModel::canGoPrevious() const
{
    return m_selectedHunkIndex > 0 || previousFile() != nullptr;
}

bool DiffViewModel::canGoNext() const
{
    return isHunk(m_selectedHunkIndex + 1) || nextFile() != nullptr;
}

void DiffViewModel::load()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_isLoading) {
        return;
    }
    m_loadTask = Job(runLoad());
    StateStep step(*this);
    step.set(m_isLoading, true, &DiffViewModel::isLoadingChanged);
    step.publish();
}

void DiffViewModel::select(int hunkIndex)
{
    VANTREL_ASSERT_UI_THREAD();
    if (!isHunk(hunkIndex)) {
        return;
    }
    StateStep step(*this);
    setSelectedHunk(step, hunkIndex);
    const bool isExplaining = startExplanation(hunkIndex);
    step.publish();
    if (isExplaining) {
        Q_EMIT explanationChanged(hunkIndex);
    }
}

void DiffViewModel::selectNext()
{
    select(m_selectedHunkIndex + 1);
}

void DiffViewModel::selectPrevious()
{
    select(m_selectedHunkIndex - 1);
}

void DiffViewModel::goNext()
{
    VANTREL_ASSERT_UI_THREAD();
    if (isHunk(m_selectedHunkIndex + 1)) {
        selectNext();
    } else if (const FileChange *const next = nextFile()) {
        openFile(*next, AppCoordinator::InitialHunkSelection::first);
    }
}

void DiffViewModel::goPrevious()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_selectedHunkIndex > 0) {
        selectPrevious();
    } else if (const FileChange *const previous = previousFile()) {
        openFile(*previous, AppCoordinator::InitialHunkSelection::last);
    }
}

void DiffViewModel::goBack()
{
    VANTREL_ASSERT_UI_THREAD();
    m_coordinator.setRoute(AppCoordinator::FilesRoute{m_route.repo});
}

void DiffViewModel::cancelAll()
{
    VANTREL_ASSERT_UI_THREAD();
    m_loadTask.cancel();
    m_explanationTasks.cancelAll();
    m_configChangeTask.cancel();
    StateStep step(*this);
    step.set(m_isLoading, false, &DiffViewModel::isLoadingChanged);
    step.publish();
}

Task<> DiffViewModel::runLoad()
{
    QList<RawHunk> rawHunks = m_route.file.hunks;
    if (rawHunks.isEmpty()) {
        auto reading = m_gitWorker.rawHunks(m_route.file, m_route.repo.url);
        const auto read = co_await std::move(reading);
        if (!read) {
            showLoadFailure(read.error());
            co_return;
        }
        rawHunks = *read;
    }

    auto layOut = [rawHunks = std::move(rawHunks)](const WorkControl &) {
        return displayedHunks(rawHunks);
    };
    auto layingOut = m_layoutWorker.run(std::move(layOut));
    const QList<Hunk> hunks = co_await std::move(layingOut);
    showHunks(hunks);
}

void DiffViewModel::showLoadFailure(const ProcessFailure &failure)
{
    const QString message = u"Couldn't read diff: "_s + failure.description();
    StateStep step(*this);
    step.set(m_errorMessage, std::optional<QString>(message), &DiffViewModel::errorMessageChanged);
    step.set(m_isLoading, false, &DiffViewModel::isLoadingChanged);
    step.publish();
}

void DiffViewModel::showHunks(const QList<Hunk> &hunks)
{
    // Jobs and prose of an earlier load belong to hunks that are not shown any more.
    m_explanationTasks.cancelAll();
    m_streamingExplanationText.clear();
    m_explanationProseFinished.clear();

    const int last = std::max(0, int(hunks.size()) - 1);
    const bool selectsLast =
        m_route.initialHunkSelection == AppCoordinator::InitialHunkSelection::last;
    const CanGo before = canGo();
    StateStep step(*this);
    step.set(m_hunks, hunks, &DiffViewModel::hunksChanged);
    step.set(m_selectedHunkIndex, selectsLast ? last : 0, &DiffViewModel::selectedHunkIndexChanged);
    if (canGo() != before) {
        step.announce(&DiffViewModel::canGoChanged);
    }
    step.set(m_errorMessage, std::optional<QString>(), &DiffViewModel::errorMessageChanged);
    const int selected = m_selectedHunkIndex;
    const bool isExplaining = startExplanation(selected);
    step.set(m_isLoading, false, &DiffViewModel::isLoadingChanged);
    step.publish();
    if (isExplaining) {
        Q_EMIT explanationChanged(selected);
    }
}

bool DiffViewModel::startExplanation(int hunkIndex)
{
    if (!isHunk(hunkIndex) || !m_hunks.at(hunkIndex).explanationState.isIdle() ||
        m_explanationTasks.contains(hunkIndex)) {
        return false;
    }
    m_hunks[hunkIndex].explanationState = LoadableState<HunkExplanation>::loading();
    m_streamingExplanationText.remove(hunkIndex);
    m_explanationProseFinished.remove(hunkIndex);
    m_explanationTasks.start(hunkIndex, runExplanation(hunkIndex));
    return true;
}

Task<> DiffViewModel::runExplanation(int hunkIndex)
{
    auto writeText = [hunk = m_hunks.at(hunkIndex)](const WorkControl &) {
        return hunkDiffText(hunk);
    };
    auto writing = m_layoutWorker.run(std::move(writeText));
    const QString hunkText = co_await std::move(writing);

    co_await m_keychainAccessNotice.showIfNeededAndWait();

    // The narrative of the change set is not asked for yet: the empty text stands for "none".
    ExplanationStream events = m_aiWorker.explainHunk(m_route.file.path, hunkText, QString());
    for (;;) {
        const auto event = co_await events.next();
        if (!event) {
            // Every reply ends in its record, so a stream that just stops is no reply.
            AIServiceError error;
            error.kind = AIServiceError::Case::invalidResponse;
            endExplanation(hunkIndex, LoadableState<HunkExplanation>::failed(error.description()));
            co_return;
        }
        if (!*event) {
            endExplanation(hunkIndex,
                           LoadableState<HunkExplanation>::failed(event->error().description()));
            co_return;
        }
        if (const auto *const completed = std::get_if<ExplanationCompleted>(&**event)) {
            endExplanation(hunkIndex,
                           LoadableState<HunkExplanation>::loaded(completed->explanation));
            co_return;
        }
        showProse(hunkIndex, **event);
    }
}

void DiffViewModel::showProse(int hunkIndex, const HunkExplanationStreamEvent &event)
{
    if (const auto *const delta = std::get_if<ProseDelta>(&event)) {
        if (delta->text.isEmpty()) {
            return;
        }
        m_streamingExplanationText[hunkIndex].append(delta->text);
    } else {
        if (m_explanationProseFinished.contains(hunkIndex)) {
            return;
        }
        m_explanationProseFinished.insert(hunkIndex);
    }
    Q_EMIT explanationChanged(hunkIndex);
}

void DiffViewModel::endExplanation(int hunkIndex, LoadableState<HunkExplanation> state)
{
    m_streamingExplanationText.remove(hunkIndex);
    m_explanationProseFinished.remove(hunkIndex);
    m_hunks[hunkIndex].explanationState = std::move(state);
    Q_EMIT explanationChanged(hunkIndex);
}

Task<> DiffViewModel::runConfigChanges(NotificationCenter::Stream notifications)
{
    while (const auto notification = co_await notifications.next()) {
        retryFailedExplanations();
    }
}

void DiffViewModel::retryFailedExplanations()
{
    QList<int> changed;
    for (int index = 0; index < hunkCount(); ++index) {
        if (isFailureOfService(m_hunks.at(index).explanationState)) {
            m_hunks[index].explanationState = LoadableState<HunkExplanation>::idle();
            changed.append(index);
        }
    }
    if (startExplanation(m_selectedHunkIndex) && !changed.contains(m_selectedHunkIndex)) {
        changed.append(m_selectedHunkIndex);
    }
    for (const int index : std::as_const(changed)) {
        Q_EMIT explanationChanged(index);
    }
}

bool DiffViewModel::isHunk(int index) const
{
    return index >= 0 && index < hunkCount();
}

DiffViewModel::CanGo DiffViewModel::canGo() const
{
    return {canGoPrevious(), canGoNext()};
}

void DiffViewModel::setSelectedHunk(StateStep<DiffViewModel> &step, int hunkIndex)
{
    const CanGo before = canGo();
    step.set(m_selectedHunkIndex, hunkIndex, &DiffViewModel::selectedHunkIndexChanged);
    if (canGo() != before) {
        step.announce(&DiffViewModel::canGoChanged);
    }
}

void DiffViewModel::openFile(const FileChange &file, AppCoordinator::InitialHunkSelection selection)
{
    m_coordinator.setRoute(
        AppCoordinator::DiffRoute{m_route.repo, file, m_route.allFiles, selection});
}

} // namespace vantrel
