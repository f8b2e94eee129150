#include "support/FakeAIService.h"

#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// "user: Why? / assistant: Because."
QString written(const QList<ChatMessage> &conversation)
{
    QStringList messages;
    for (const ChatMessage &message : conversation) {
        const bool isQuestion = message.role == ChatMessage::Role::user;
        messages.append((isQuestion ? u"user: "_s : u"assistant: "_s) + message.text);
    }
    return messages.join(u" / "_s);
}

template<typename Value>
Task<Result<Value, AIFailure>> wholeReply(Stream<Value, AIFailure> stream)
{
    auto reply = co_await stream.next();
    if (!reply) {
        AIServiceError error;
        error.kind = AIServiceError::Case::invalidResponse;
        co_return failure(AIFailure(error));
    }
    co_return std::move(*reply);
}

} // namespace

FakeAIService::FakeAIService(CallLog &log)
    : m_log(log)
{}

template<typename Value>
Stream<Value, AIFailure> FakeAIService::request(Requests<Value> &requests, const QString &operation,
                                                const QStringList &arguments)
{
    m_log.append(operation + u' ' + arguments.join(u" | "_s));
    const std::size_t number = requests.size();
    Channel<Value, AIFailure> &channel = requests.emplace_back();
    channel.onTermination([this, operation, number] {
        m_log.append(u"%1 %2 released"_s.arg(operation).arg(number));
    });
    return channel.stream();
}

Task<Result<QString, AIFailure>> FakeAIService::complete(QString systemPrompt, QString userMessage)
{
    return wholeReply(request(completions, u"complete"_s, {systemPrompt, userMessage}));
}

Task<Result<QString, AIFailure>> FakeAIService::summarizeFile(QString path, QString diffText)
{
    return wholeReply(request(summaries, u"summarizeFile"_s, {path, diffText}));
}

ExplanationStream FakeAIService::explainHunk(QString path, QString hunkText, QString fullPicture)
{
    return request(explanations, u"explainHunk"_s, {path, hunkText, fullPicture});
}

TextStream FakeAIService::chatAboutHunk(QString path, QString hunkText,
                                        QList<ChatMessage> conversation)
{
    return request(chats, u"chatAboutHunk"_s, {path, hunkText, written(conversation)});
}

Task<Result<QStringList, AIFailure>>
FakeAIService::suggestQuestions(QString path, QString hunkText, QList<ChatMessage> conversation)
{
    return wholeReply(
        request(suggestions, u"suggestQuestions"_s, {path, hunkText, written(conversation)}));
}

} // namespace vantrel::test
