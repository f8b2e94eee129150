#include "support/FakeAIService.h"

#include <gtest/gtest.h>

#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

AIFailure unscripted(const char *operation)
{
    ADD_FAILURE() << "unscripted question: " << operation;
    AIServiceError error;
    error.kind = AIServiceError::Case::invalidResponse;
    return error;
}

} // namespace

FakeAIService::FakeAIService(CallLog &log)
    : m_log(log)
{}

Task<Result<QString, AIFailure>> FakeAIService::complete(QString, QString)
{
    co_return failure(unscripted("complete"));
}

Task<Result<QString, AIFailure>> FakeAIService::summarizeFile(QString, QString)
{
    co_return failure(unscripted("summarizeFile"));
}

ExplanationStream FakeAIService::explainHunk(QString path, QString hunkText, QString fullPicture)
{
    m_log.append(u"explainHunk %1 | %2 | %3"_s.arg(path, hunkText, fullPicture));
    const std::size_t number = m_explanations.size();
    ExplanationChannel &channel = m_explanations.emplace_back();
    channel.onTermination(
        [this, number] { m_log.append(u"explanation %1 released"_s.arg(number)); });
    return channel.stream();
}

TextStream FakeAIService::chatAboutHunk(QString, QString, QList<ChatMessage>)
{
    Channel<QString, AIFailure> channel;
    channel.fail(unscripted("chatAboutHunk"));
    return channel.stream();
}

Task<Result<QStringList, AIFailure>> FakeAIService::suggestQuestions(QString, QString,
                                                                     QList<ChatMessage>)
{
    co_return failure(unscripted("suggestQuestions"));
}

} // namespace vantrel::test
