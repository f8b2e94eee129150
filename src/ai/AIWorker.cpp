#include "ai/AIWorker.h"

#include <utility>

namespace vantrel {

AIWorker::AIWorker(AIServicing &service)
    : m_service(service)
{}

Task<Result<QString, AIFailure>> AIWorker::complete(QString systemPrompt, QString userMessage)
{
    const auto turn = co_await m_queue.turn();
    auto reply = m_service.complete(std::move(systemPrompt), std::move(userMessage));
    co_return co_await std::move(reply);
}

Task<Result<QString, AIFailure>> AIWorker::summarizeFile(QString path, QString diffText)
{
    const auto turn = co_await m_queue.turn();
    auto summary = m_service.summarizeFile(std::move(path), std::move(diffText));
    co_return co_await std::move(summary);
}

Task<Result<QString, AIFailure>> AIWorker::summarizeChangeset(QList<ChangesetEntry> entries)
{
    const auto turn = co_await m_queue.turn();
    auto request = m_service.complete(prompts::fullPicture(), prompts::fullPictureMessage(entries));
    const auto reply = co_await std::move(request);
    if (!reply) {
        co_return failure(reply.error());
    }
    co_return reply->trimmed();
}

ExplanationStream AIWorker::explainHunk(QString path, QString hunkText, QString fullPicture)
{
    return m_service.explainHunk(std::move(path), std::move(hunkText), std::move(fullPicture));
}

TextStream AIWorker::chatAboutHunk(QString path, QString hunkText, QList<ChatMessage> conversation)
{
    return m_service.chatAboutHunk(std::move(path), std::move(hunkText), std::move(conversation));
}

Task<Result<QStringList, AIFailure>> AIWorker::suggestQuestions(QString path, QString hunkText,
                                                                QList<ChatMessage> conversation)
{
    const auto turn = co_await m_queue.turn();
    auto questions =
        m_service.suggestQuestions(std::move(path), std::move(hunkText), std::move(conversation));
    co_return co_await std::move(questions);
}

} // namespace vantrel
