#include "app/ChatThreadViewModel.h"

#include "ai/AIWorker.h"
#include "persistence/ChatHistoryStoring.h"
#include "persistence/KeychainAccessNotice.h"
#include "platform/StateStep.h"
#include "platform/jobs/RunQueue.h"

#include <QLoggingCategory>

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(suggestedQuestionsLog, "com.orbisk.app.SuggestedQuestions", QtInfoMsg)

/// What an earlier run left: an answer that it did not live to finish ends where it stood.
QList<ChatMessage> settled(const QList<ChatMessage> &stored)
{
    QList<ChatMessage> messages;
    for (ChatMessage message : stored) {
        const bool isUnanswered = message.isStreaming && message.text.isEmpty();
        message.isStreaming = false;
        if (!isUnanswered) {
            messages.append(message);
        }
    }
    return messages;
}

} // namespace

ChatThreadViewModel::ChatThreadViewModel(Subject subject,
                                         std::optional<HunkExplanation> explanation,
                                         AIWorker &aiWorker,
                                         KeychainAccessNotice &keychainAccessNotice,
                                         ChatHistoryStoring &chatHistoryStore, QObject *parent)
    : QObject(parent)
    , m_subject(std::move(subject))
    , m_aiWorker(aiWorker)
    , m_keychainAccessNotice(keychainAccessNotice)
    , m_chatHistoryStore(chatHistoryStore)
    , m_explanation(std::move(explanation))
{
    VANTREL_ASSERT_UI_THREAD();
    if (const auto stored = chatHistoryStore.thread(m_subject.filePath, m_subject.hunkDiff)) {
        m_messages = settled(stored->messages);
        m_suggestedQuestions = stored->suggestedQuestions;
        if (!m_explanation) {
            m_explanation = stored->explanation;
        }
    } else if (m_explanation) {
        m_suggestedQuestions = m_explanation->suggestedQuestions;
    }
}

ChatThreadViewModel::~ChatThreadViewModel()
{
    m_streamTask.cancel();
    blockSignals(true);
    closeAnswer(); // What has come of an answer outlives the window that it came to.
}

void ChatThreadViewModel::setDraft(const QString &draft)
{
    VANTREL_ASSERT_UI_THREAD();
    StateStep step(*this);
    step.set(m_draft, draft, &ChatThreadViewModel::draftChanged);
    step.publish();
}

QString ChatThreadViewModel::errorMessage() const
{
    return m_errorMessage.value_or(QString());
}

void ChatThreadViewModel::send()
{
    VANTREL_ASSERT_UI_THREAD();
    const QString question = m_draft.trimmed();
    if (question.isEmpty()) {
        return;
    }
    m_streamTask.cancel();
    m_suggestionRefreshTask.cancel();
    closeAnswer();

    ChatMessage asked;
    asked.id = QUuid::createUuid();
    asked.role = ChatMessage::Role::user;
    asked.text = question;
    append(asked);
    save();
    const QList<ChatMessage> conversation = m_messages;

    ChatMessage answer;
    answer.id = QUuid::createUuid();
    answer.role = ChatMessage::Role::assistant;
    answer.isStreaming = true;
    append(answer);
    m_streamTask = Job(runAnswer(conversation));

    StateStep step(*this);
    step.set(m_draft, QString(), &ChatThreadViewModel::draftChanged);
    step.set(m_errorMessage, std::optional<QString>(), &ChatThreadViewModel::errorMessageChanged);
    step.set(m_isRefreshingSuggestions, false,
             &ChatThreadViewModel::isRefreshingSuggestionsChanged);
    step.set(m_isReplyInProgress, true, &ChatThreadViewModel::isReplyInProgressChanged);
    step.publish();
}

void ChatThreadViewModel::apply(const HunkExplanation &explanation)
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_explanation && !m_messages.isEmpty()) {
        return;
    }
    m_explanation = explanation;
    if (!m_messages.isEmpty()) {
        if (!m_isReplyInProgress) {
            save();
        }
        return;
    }
    StateStep step(*this);
    step.set(m_suggestedQuestions, explanation.suggestedQuestions,
             &ChatThreadViewModel::suggestedQuestionsChanged);
    step.publish();
}

void ChatThreadViewModel::clearServiceError()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_errorMessage && isAIServiceErrorSentence(*m_errorMessage)) {
        StateStep step(*this);
        step.set(m_errorMessage, std::optional<QString>(),
                 &ChatThreadViewModel::errorMessageChanged);
        step.publish();
    }
}

void ChatThreadViewModel::cancelTasks()
{
    VANTREL_ASSERT_UI_THREAD();
    m_streamTask.cancel();
    m_suggestionRefreshTask.cancel();
    StateStep step(*this);
    step.set(m_isReplyInProgress, false, &ChatThreadViewModel::isReplyInProgressChanged);
    step.set(m_isRefreshingSuggestions, false,
             &ChatThreadViewModel::isRefreshingSuggestionsChanged);
    closeAnswer();
    step.publish();
}

Task<> ChatThreadViewModel::runAnswer(QList<ChatMessage> conversation)
{
    co_await m_keychainAccessNotice.showIfNeededAndWait();
    TextStream deltas =
        m_aiWorker.chatAboutHunk(m_subject.filePath, m_subject.hunkDiff, conversation);
    while (const auto delta = co_await deltas.next()) {
        if (!*delta) {
            endAnswer(delta->error().description());
            co_return;
        }
        if (!(*delta)->isEmpty()) {
            m_messages.last().text += **delta; // The answer stays the last message while it grows.
            Q_EMIT messageChanged(int(m_messages.size()) - 1);
        }
    }
    if (m_messages.last().text.trimmed().isEmpty()) {
        AIServiceError error;
        error.kind = AIServiceError::Case::invalidResponse;
        endAnswer(error.description());
        co_return;
    }
    endAnswer(std::nullopt);
}

void ChatThreadViewModel::endAnswer(const std::optional<QString> &failure)
{
    // Everything is settled before anybody hears of it: whoever does may send the next question.
    StateStep step(*this);
    step.set(m_errorMessage, failure, &ChatThreadViewModel::errorMessageChanged);
    step.set(m_isReplyInProgress, false, &ChatThreadViewModel::isReplyInProgressChanged);
    if (!failure) {
        m_suggestionRefreshTask = Job(runSuggestionRefresh());
        step.set(m_isRefreshingSuggestions, true,
                 &ChatThreadViewModel::isRefreshingSuggestionsChanged);
    }
    closeAnswer();
    step.publish();
}

void ChatThreadViewModel::closeAnswer()
{
    if (m_messages.isEmpty() || !m_messages.last().isStreaming) {
        return;
    }
    const int last = int(m_messages.size()) - 1;
    // One without a word is left out: some providers refuse a conversation with an empty message.
    const bool isBlank = m_messages.last().text.trimmed().isEmpty();
    if (isBlank) {
        m_messages.removeLast();
    } else {
        m_messages.last().isStreaming = false;
    }
    save();
    if (isBlank) {
        Q_EMIT messageRemoved(last);
    } else {
        Q_EMIT messageChanged(last);
    }
}

Task<> ChatThreadViewModel::runSuggestionRefresh()
{
    co_await m_keychainAccessNotice.showIfNeededAndWait();
    auto asking = m_aiWorker.suggestQuestions(m_subject.filePath, m_subject.hunkDiff, m_messages);
    const auto questions = co_await std::move(asking);
    StateStep step(*this);
    step.set(m_isRefreshingSuggestions, false,
             &ChatThreadViewModel::isRefreshingSuggestionsChanged);
    if (!questions) {
        qCInfo(suggestedQuestionsLog, "Suggestion refresh failed; keeping the previous chips: %ls",
               qUtf16Printable(questions.error().description()));
    } else if (questions->isEmpty()) {
        qCInfo(suggestedQuestionsLog,
               "Suggestion refresh returned no usable questions; keeping the previous chips.");
    } else {
        step.set(m_suggestedQuestions, *questions, &ChatThreadViewModel::suggestedQuestionsChanged);
        save();
    }
    step.publish();
}

void ChatThreadViewModel::append(const ChatMessage &message)
{
    m_messages.append(message);
    Q_EMIT messageAppended(int(m_messages.size()) - 1);
}

void ChatThreadViewModel::save()
{
    m_chatHistoryStore.save(m_subject.filePath, m_subject.hunkDiff, m_messages,
                            m_suggestedQuestions, m_explanation);
}

} // namespace vantrel
