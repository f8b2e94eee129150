#include "app/DiffViewModel.h"

#include "ai/AIResultCache.h"
#include "ai/AIWorker.h"
#include "ai/config/AINotifications.h"
#include "app/ChangesetNarrative.h"
#include "git/GitWorker.h"
#include "models/DiffText.h"
#include "models/DisplayedHunks.h"
#include "persistence/ChatHistoryStoring.h"
#include "persistence/KeychainAccessNotice.h"
#include "platform/StateStep.h"
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

using ExplanationState = LoadableState<HunkExplanation>;

/// The key of the background run among the jobs of hunks.
constexpr int backgroundRun = -1;

/// The sentence for a reply that says nothing.
QString noReply()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::invalidResponse;
    return error.description();
}

bool isFailureOfService(const ExplanationState &state)
{
    return state.isFailed() && isAIServiceErrorSentence(*state.message());
}

} // namespace

DiffViewModel::DiffViewModel(AppCoordinator::DiffRoute route, const ReviewServices &services,
                             QObject *parent)
    : QObject(parent)
    , m_route(std::move(route))
    , m_services(services)
    , m_aiResultCache(services.coordinator.aiResultCache())
    , m_fileIndex(indexOfFile(m_route))
{
    VANTREL_ASSERT_UI_THREAD();
    m_configChangeTask =
        Job(runConfigChanges(services.notificationCenter.notifications(aiConfigurationDidChange)));
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
    m_services.coordinator.setRoute(AppCoordinator::FilesRoute{m_route.repo});
}

void DiffViewModel::cancelAll()
{
    VANTREL_ASSERT_UI_THREAD();
    m_loadTask.cancel();
    m_explanationTasks.cancelAll();
    for (const auto &[hunkIndex, chat] : m_chatViewModels) {
        chat->cancelTasks();
    }
    m_configChangeTask.cancel();
    StateStep step(*this);
    step.set(m_isLoading, false, &DiffViewModel::isLoadingChanged);
    step.publish();
}

Task<> DiffViewModel::runLoad()
{
    QList<RawHunk> rawHunks = m_route.file.hunks;
    if (rawHunks.isEmpty()) {
        auto reading = m_services.gitWorker.rawHunks(m_route.file, m_route.repo.url);
        const auto read = co_await std::move(reading);
        if (!read) {
            showLoadFailure(read.error());
            co_return;
        }
        rawHunks = *read;
    }

    auto layOut = [rawHunks = std::move(rawHunks)](const WorkControl &) {
        LaidOut laidOut;
        laidOut.hunks = displayedHunks(rawHunks);
        for (const Hunk &hunk : std::as_const(laidOut.hunks)) {
            laidOut.texts.append(hunkDiffText(hunk));
        }
        return laidOut;
    };
    auto layingOut = m_layoutWorker.run(std::move(layOut));
    LaidOut laidOut = co_await std::move(layingOut);
    co_await m_services.chatHistoryStore.whenLoaded();
    showHunks(std::move(laidOut));
}

void DiffViewModel::showLoadFailure(const ProcessFailure &failure)
{
    const QString message = u"Couldn't read diff: "_s + failure.description();
    StateStep step(*this);
    step.set(m_errorMessage, std::optional<QString>(message), &DiffViewModel::errorMessageChanged);
    step.set(m_isLoading, false, &DiffViewModel::isLoadingChanged);
    step.publish();
}

void DiffViewModel::showHunks(LaidOut laidOut)
{
    // Jobs, prose and conversations of an earlier load belong to hunks that are not shown any more.
    m_explanationTasks.cancelAll();
    m_streamingExplanationText.clear();
    m_explanationProseFinished.clear();
    const auto formerChats = std::exchange(m_chatViewModels, {});
    seedExplanations(laidOut);

    const int last = std::max(0, int(laidOut.hunks.size()) - 1);
    const bool selectsLast =
        m_route.initialHunkSelection == AppCoordinator::InitialHunkSelection::last;
    const CanGo before = canGo();
    StateStep step(*this);
    m_hunkTexts = std::move(laidOut.texts);
    step.set(m_hunks, std::move(laidOut.hunks), &DiffViewModel::hunksChanged);
    step.set(m_selectedHunkIndex, selectsLast ? last : 0, &DiffViewModel::selectedHunkIndexChanged);
    if (canGo() != before) {
        step.announce(&DiffViewModel::canGoChanged);
    }
    step.set(m_errorMessage, std::optional<QString>(), &DiffViewModel::errorMessageChanged);
    const int selected = m_selectedHunkIndex;
    const bool isExplaining = startExplanation(selected);
    startBackgroundRun();
    step.set(m_isLoading, false, &DiffViewModel::isLoadingChanged);
    step.publish();
    if (isExplaining) {
        Q_EMIT explanationChanged(selected);
    }
}

void DiffViewModel::seedExplanations(LaidOut &laidOut)
{
    const auto stored = m_services.chatHistoryStore.explanations(m_route.file.path);
    for (qsizetype index = 0; index < laidOut.hunks.size(); ++index) {
        const HunkKey key{m_route.file.path, laidOut.texts.at(index)};
        const auto explanation = stored.constFind(key.diffText);
        if (explanation != stored.cend()) {
            m_aiResultCache->setHunkExplanation(key, *explanation);
        }
        if (auto known = m_aiResultCache->hunkExplanation(key)) {
            laidOut.hunks[index].explanationState = ExplanationState::loaded(*std::move(known));
        }
    }
}

bool DiffViewModel::startExplanation(int hunkIndex)
{
    if (!isHunk(hunkIndex) || !m_hunks.at(hunkIndex).explanationState.isIdle() ||
        m_explanationTasks.contains(hunkIndex)) {
        return false;
    }
    m_hunks[hunkIndex].explanationState = ExplanationState::loading();
    m_streamingExplanationText.remove(hunkIndex);
    m_explanationProseFinished.remove(hunkIndex);
    m_explanationTasks.start(hunkIndex, runExplanation(hunkIndex));
    return true;
}

Task<> DiffViewModel::runExplanation(int hunkIndex)
{
    auto telling = narrative();
    const QString fullPicture = co_await std::move(telling);
    co_await m_services.keychainAccessNotice.showIfNeededAndWait();
    ExplanationStream events =
        m_services.aiWorker.explainHunk(m_route.file.path, m_hunkTexts.at(hunkIndex), fullPicture);
    for (;;) {
        const auto event = co_await events.next();
        if (!event) {
            // Every reply ends in its record, so a stream that just stops is no reply.
            endExplanation(hunkIndex, ExplanationState::failed(noReply()));
            co_return;
        }
        if (!*event) {
            endExplanation(hunkIndex, ExplanationState::failed(event->error().description()));
            co_return;
        }
        if (const auto *const completed = std::get_if<ExplanationCompleted>(&**event)) {
            showExplanation(hunkIndex, completed->explanation);
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

void DiffViewModel::showExplanation(int hunkIndex, const HunkExplanation &explanation)
{
    if (explanation.explanation.trimmed().isEmpty() && explanation.points.isEmpty()) {
        endExplanation(hunkIndex, ExplanationState::failed(noReply()));
        return;
    }
    m_aiResultCache->setHunkExplanation(hunkKey(hunkIndex), explanation);
    endExplanation(hunkIndex, ExplanationState::loaded(explanation));
    const auto chat = m_chatViewModels.find(hunkIndex);
    if (chat != m_chatViewModels.end()) {
        chat->second->apply(explanation);
    }
}

void DiffViewModel::endExplanation(int hunkIndex, ExplanationState state)
{
    m_streamingExplanationText.remove(hunkIndex);
    m_explanationProseFinished.remove(hunkIndex);
    m_hunks[hunkIndex].explanationState = std::move(state);
    Q_EMIT explanationChanged(hunkIndex);
}

void DiffViewModel::startBackgroundRun()
{
    QList<int> others;
    for (int index = 0; index < hunkCount(); ++index) {
        if (index != m_selectedHunkIndex) {
            others.append(index);
        }
    }
    if (!others.isEmpty() && !m_explanationTasks.contains(backgroundRun)) {
        m_explanationTasks.start(backgroundRun, runBackground(others));
    }
}

Task<> DiffViewModel::runBackground(QList<int> hunkIndices)
{
    for (const int index : std::as_const(hunkIndices)) {
        if (startExplanation(index)) {
            Q_EMIT explanationChanged(index);
        }
        if (!m_explanationTasks.contains(index)) {
            continue;
        }
        auto ending = m_explanationTasks.finished(index);
        co_await std::move(ending);
        if (m_hunks.at(index).explanationState.isFailed() && index != m_selectedHunkIndex) {
            // Selecting it later tries again. What failed once is likely to fail for the rest too.
            m_hunks[index].explanationState = ExplanationState::idle();
            Q_EMIT explanationChanged(index);
            co_return;
        }
    }
}

Task<QString> DiffViewModel::narrative()
{
    auto making = changesetNarrative(m_aiResultCache, m_route.changeset, &m_services.aiWorker,
                                     &m_services.keychainAccessNotice);
    co_return co_await std::move(making);
}

ChatThreadViewModel *DiffViewModel::chatViewModel(int hunkIndex)
{
    VANTREL_ASSERT_UI_THREAD();
    if (!isHunk(hunkIndex)) {
        return nullptr;
    }
    std::unique_ptr<ChatThreadViewModel> &chat = m_chatViewModels[hunkIndex];
    if (!chat) {
        ChatThreadViewModel::Subject subject;
        subject.repoPath = m_route.repo.url.path();
        subject.filePath = m_route.file.path;
        subject.hunkDiff = m_hunkTexts.at(hunkIndex);
        const HunkExplanation *const known = m_hunks.at(hunkIndex).explanationState.value();
        chat = std::make_unique<ChatThreadViewModel>(
            subject, known == nullptr ? std::nullopt : std::optional(*known), m_services.aiWorker,
            m_services.keychainAccessNotice, m_services.chatHistoryStore, this);
    }
    return chat.get();
}

Task<> DiffViewModel::runConfigChanges(NotificationCenter::Stream notifications)
{
    while (const auto notification = co_await notifications.next()) {
        retryFailedExplanations();
        clearServiceErrors();
    }
}

void DiffViewModel::retryFailedExplanations()
{
    QList<int> changed;
    for (int index = 0; index < hunkCount(); ++index) {
        if (isFailureOfService(m_hunks.at(index).explanationState)) {
            m_hunks[index].explanationState = ExplanationState::idle();
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

void DiffViewModel::clearServiceErrors()
{
    for (const auto &[hunkIndex, chat] : m_chatViewModels) {
        chat->clearServiceError();
    }
}

bool DiffViewModel::isHunk(int index) const
{
    return index >= 0 && index < hunkCount();
}

HunkKey DiffViewModel::hunkKey(int index) const
{
    return {m_route.file.path, m_hunkTexts.at(index)};
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
    m_services.coordinator.setRoute(AppCoordinator::DiffRoute{m_route.repo, file, m_route.allFiles,
                                                              m_route.changeset, selection});
}

} // namespace vantrel
