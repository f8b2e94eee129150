#pragma once

#include "ai/AIServicing.h"
#include "git/GitServicing.h"
#include "persistence/KeychainStoring.h"
#include "platform/jobs/Channel.h"
#include "platform/jobs/WaiterList.h"

#include <QHash>
#include <QSemaphore>
#include <QStringList>

#include <deque>
#include <map>
#include <optional>

namespace vantrel::screenshots {

/// Answers with what it was made from, instead of asking git. Thread: any.
class SampleGitService final : public GitServicing
{
public:
    using Listing = Result<QList<FileChange>, ProcessFailure>;
    using RawHunks = Result<QList<RawHunk>, ProcessFailure>;
    using Branch = Result<std::optional<QString>, ProcessFailure>;

    /// Without a listing the question for it stays open until the service is told to `letGo`.
    void setListing(std::optional<Listing> listing) { m_listing = std::move(listing); }
    void setRawHunks(RawHunks hunks) { m_rawHunks = std::move(hunks); }

    /// Lets an open question end, so that its thread can.
    void letGo() { m_gate.release(); }

    Listing changedFiles(const QUrl &repositoryRoot, const ListingControl &control) override;
    RawHunks rawHunks(const FileChange &file, const QUrl &repositoryRoot) override;
    Branch currentBranch(const QUrl &repositoryRoot) override;

private:
    std::optional<Listing> m_listing{QList<FileChange>()};
    RawHunks m_rawHunks{QList<RawHunk>()};
    QSemaphore m_gate;
};

/// A keychain in memory. Thread: one at a time.
class SampleKeychain final : public KeychainStoring
{
public:
    std::optional<QString> apiKey(AIProvider provider) override;
    Result<void, KeychainError> saveAPIKey(const QString &key, AIProvider provider) override;
    Result<void, KeychainError> deleteAPIKey(AIProvider provider) override;

private:
    std::map<AIProvider, QString> m_keys{};
};

/// A model that answers from a script; what the script leaves out stays open. Thread: interface.
class SampleAIService final : public AIServicing
{
public:
    /// One streamed reply. It stays open until it is completed or fails.
    struct Explanation
    {
        QString prose{};
        std::optional<HunkExplanation> explanation{};
        std::optional<AIServiceError> error{};
    };
    struct Answer
    {
        QString text{};
        bool isComplete = false;
        std::optional<AIServiceError> error{};
    };
    using Summary = Result<QString, AIFailure>;

    void setNarrative(const QString &narrative) { m_narrative = narrative; }
    void setSummaries(QHash<QString, Summary> byPath) { m_summaries = std::move(byPath); }
    void setExplanation(const QString &hunkText, const Explanation &explanation)
    {
        m_explanations.insert(hunkText, explanation);
    }

    /// The answers to the questions that will be asked, in that order.
    void setAnswers(QList<Answer> answers) { m_answers = std::move(answers); }

    /// Those that follow each answer.
    void setQuestions(const QStringList &questions) { m_questions = questions; }

    Task<Result<QString, AIFailure>> complete(QString systemPrompt, QString userMessage) override;
    Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText) override;
    ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture) override;
    TextStream chatAboutHunk(QString path, QString hunkText,
                             QList<ChatMessage> conversation) override;
    Task<Result<QStringList, AIFailure>> suggestQuestions(QString path, QString hunkText,
                                                          QList<ChatMessage> conversation) override;

private:
    QString m_narrative{};
    QHash<QString, Summary> m_summaries{};
    QHash<QString, Explanation> m_explanations{};
    QList<Answer> m_answers{};
    QStringList m_questions{};
    WaiterList m_never{};
    std::deque<Channel<HunkExplanationStreamEvent, AIFailure>> m_explanationChannels{};
    std::deque<Channel<QString, AIFailure>> m_answerChannels{};
};

} // namespace vantrel::screenshots
