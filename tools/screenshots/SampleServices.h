#pragma once

#include "ai/AIServicing.h"
#include "git/GitServicing.h"
#include "platform/jobs/Channel.h"

#include <QSemaphore>

#include <deque>
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

/// A model that is read from a script and stops wherever the script does. Thread: interface.
class SampleAIService final : public AIServicing
{
public:
    /// The replies to the explanations that will be asked for, in that order. A reply stays open
    /// until it is completed or fails.
    struct Reply
    {
        QString prose{};
        std::optional<HunkExplanation> explanation{};
        std::optional<AIServiceError> error{};
    };

    void setReplies(QList<Reply> replies) { m_replies = std::move(replies); }

    Task<Result<QString, AIFailure>> complete(QString systemPrompt, QString userMessage) override;
    Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText) override;
    ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture) override;
    TextStream chatAboutHunk(QString path, QString hunkText,
                             QList<ChatMessage> conversation) override;
    Task<Result<QStringList, AIFailure>> suggestQuestions(QString path, QString hunkText,
                                                          QList<ChatMessage> conversation) override;

private:
    using ExplanationChannel = Channel<HunkExplanationStreamEvent, AIFailure>;

    QList<Reply> m_replies{};
    std::deque<ExplanationChannel> m_channels{};
};

} // namespace vantrel::screenshots
