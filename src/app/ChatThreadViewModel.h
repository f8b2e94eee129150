#pragma once

#include "ai/AIServicing.h"
#include "models/ChatMessage.h"
#include "models/HunkExplanation.h"
#include "platform/jobs/Job.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace vantrel {

class AIWorker;
class ChatHistoryStoring;
class KeychainAccessNotice;

/// The follow-up conversation about one hunk: its messages, the draft, the suggested questions, and
/// the answer that streams in. Every change of the conversation is saved. Thread: interface.
class ChatThreadViewModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isReplyInProgress READ isReplyInProgress NOTIFY isReplyInProgressChanged)
    Q_PROPERTY(
        QStringList suggestedQuestions READ suggestedQuestions NOTIFY suggestedQuestionsChanged)
    Q_PROPERTY(bool isRefreshingSuggestions READ isRefreshingSuggestions NOTIFY
                   isRefreshingSuggestionsChanged)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

public:
    /// What the conversation is about. `repoPath` is the repository's folder.
    struct Subject
    {
        QString repoPath{};
        QString filePath{};
        QString hunkDiff{};
    };

    /// Restores the stored conversation about the hunk, or starts one from its explanation. The
    /// history must be loaded. The references must outlive the view model.
    ChatThreadViewModel(Subject subject, std::optional<HunkExplanation> explanation,
                        AIWorker &aiWorker, KeychainAccessNotice &keychainAccessNotice,
                        ChatHistoryStoring &chatHistoryStore, QObject *parent = nullptr);
    ~ChatThreadViewModel() override;

    [[nodiscard]] const QList<ChatMessage> &messages() const { return m_messages; }
    [[nodiscard]] bool isReplyInProgress() const { return m_isReplyInProgress; }
    [[nodiscard]] const QStringList &suggestedQuestions() const { return m_suggestedQuestions; }
    [[nodiscard]] bool isRefreshingSuggestions() const { return m_isRefreshingSuggestions; }
    [[nodiscard]] const QString &draft() const { return m_draft; }
    void setDraft(const QString &draft);
    [[nodiscard]] QString errorMessage() const; ///< Empty unless the last send failed.
    [[nodiscard]] const std::optional<HunkExplanation> &explanation() const
    {
        return m_explanation;
    }

    /// Sends the draft, unless it is blank. An answer that still streams in is cut off.
    Q_INVOKABLE void send();

    /// Takes the hunk's explanation and, while nothing was said, its questions.
    void apply(const HunkExplanation &explanation);

    /// Clears a failure that a change of the configuration may have mended.
    void clearServiceError();

    /// Ends the answer and the refresh of the suggestions. What was published stays.
    void cancelTasks();

Q_SIGNALS:
    void messageAppended(int index); ///< A message was added at the end of `messages`.
    void messageChanged(int index);  ///< Text or `isStreaming` of a message.
    void messageRemoved(int index);  ///< The last message, an answer without a word, is gone.
    void isReplyInProgressChanged();
    void suggestedQuestionsChanged();
    void isRefreshingSuggestionsChanged();
    void draftChanged();
    void errorMessageChanged();

private:
    Task<> runAnswer(QList<ChatMessage> conversation);
    void endAnswer(const std::optional<QString> &failure);

    /// Makes of the answer that was streaming in a message like the others, or none if it is blank,
    /// and saves the thread.
    void closeAnswer();

    Task<> runSuggestionRefresh();
    void append(const ChatMessage &message);
    void save();

    Subject m_subject;
    AIWorker &m_aiWorker;
    KeychainAccessNotice &m_keychainAccessNotice;
    ChatHistoryStoring &m_chatHistoryStore;
    QList<ChatMessage> m_messages{};
    bool m_isReplyInProgress = false;
    QStringList m_suggestedQuestions{};
    bool m_isRefreshingSuggestions = false;
    QString m_draft{};
    std::optional<QString> m_errorMessage{};
    std::optional<HunkExplanation> m_explanation{};
    Job m_streamTask{};
    Job m_suggestionRefreshTask{};
};

} // namespace vantrel
