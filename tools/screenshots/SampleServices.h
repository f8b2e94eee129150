#pragma once

#include "ai/AIServicing.h"
#include "git/GitServicing.h"
#include "git/RepositoryGuarding.h"
#include "onboarding/LocalModelServerDetecting.h"
#include "onboarding/OpenRouterSigningIn.h"
#include "persistence/KeychainStoring.h"
#include "platform/jobs/Channel.h"
#include "platform/jobs/WaiterList.h"

#include "persistence/RecentReposStoring.h"

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

/// A guard that finds in every repository what it was given. Thread: any, once it is filled.
class SampleRepositoryGuard final : public RepositoryGuarding
{
public:
    using Programs = Result<QList<RepositoryProgram>, ProcessFailure>;

    void setPrograms(QList<RepositoryProgram> programs) { m_programs = std::move(programs); }

    Programs inspect(const QUrl &) override { return m_programs; }
    void allow(const QUrl &, const QList<RepositoryProgram> &) override {}

private:
    QList<RepositoryProgram> m_programs{};
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

/// A sign-in that ends as it was told to, or waits for the browser. Thread: interface.
class SampleSignIn final : public OpenRouterSigningIn
{
public:
    using Outcome = Result<QString, OpenRouterSignInError>;

    void setOutcome(Outcome outcome) { m_outcome = std::move(outcome); }

    Task<Outcome> obtainAPIKey() override;

private:
    std::optional<Outcome> m_outcome{};
    WaiterList m_never{};
};

/// Finds the servers that it was given, or goes on looking. Thread: interface.
class SampleLocalDetector final : public LocalModelServerDetecting
{
public:
    void setStatuses(LocalModelServerStatuses statuses) { m_statuses = std::move(statuses); }

    Task<LocalModelServerStatuses> detectAll() override;

private:
    std::optional<LocalModelServerStatuses> m_statuses{};
    WaiterList m_never{};
};

/// Recent repositories that do not depend on what is on the disk. Thread: any, once it is filled.
class SampleRecentRepos final : public RecentReposStoring
{
public:
    /// Newest first.
    void setRepos(QList<RecentRepo> repos) { m_repos = std::move(repos); }
    void setMissing(const QString &path) { m_missing = path; }

    [[nodiscard]] QList<RecentRepo> load() const override { return m_repos; }
    void record(const QString &, const QString &) override {}
    [[nodiscard]] bool isRepository(const QString &path) const override;

private:
    QList<RecentRepo> m_repos{};
    QString m_missing{};
};

} // namespace vantrel::screenshots
