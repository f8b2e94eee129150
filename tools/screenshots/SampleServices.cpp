#include "SampleServices.h"

#include "ai/HunkExplanationStreamEvent.h"

#include <utility>

namespace vantrel::screenshots {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Of everything that no picture shows.
AIFailure notScripted()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::invalidResponse;
    return error;
}

} // namespace

SampleGitService::Listing SampleGitService::changedFiles(const QUrl &, const ListingControl &)
{
    if (!m_listing) {
        m_gate.acquire();
        return QList<FileChange>();
    }
    return *m_listing;
}

SampleGitService::RawHunks SampleGitService::rawHunks(const FileChange &, const QUrl &)
{
    return m_rawHunks;
}

SampleGitService::Branch SampleGitService::currentBranch(const QUrl &)
{
    return std::optional(u"feature/token-refresh"_s);
}

Task<Result<QString, AIFailure>> SampleAIService::complete(QString, QString)
{
    co_return failure(notScripted());
}

Task<Result<QString, AIFailure>> SampleAIService::summarizeFile(QString, QString)
{
    co_return failure(notScripted());
}

ExplanationStream SampleAIService::explainHunk(QString, QString, QString)
{
    ExplanationChannel &channel = m_channels.emplace_back();
    if (m_replies.isEmpty()) {
        return channel.stream();
    }
    const Reply reply = m_replies.takeFirst();
    if (!reply.prose.isEmpty()) {
        channel.push(ProseDelta{reply.prose});
    }
    if (reply.explanation) {
        channel.push(ExplanationCompleted{*reply.explanation});
        channel.finish();
    } else if (reply.error) {
        channel.fail(*reply.error);
    }
    return channel.stream();
}

TextStream SampleAIService::chatAboutHunk(QString, QString, QList<ChatMessage>)
{
    Channel<QString, AIFailure> channel;
    channel.fail(notScripted());
    return channel.stream();
}

Task<Result<QStringList, AIFailure>> SampleAIService::suggestQuestions(QString, QString,
                                                                       QList<ChatMessage>)
{
    co_return failure(notScripted());
}

} // namespace vantrel::screenshots
