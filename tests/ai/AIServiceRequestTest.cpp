#include "ai/AIPrompts.h"
#include "ai/AIServiceFixture.h"
#include "ai/config/AINotifications.h"
#include "platform/jobs/RunQueue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>

#include <chrono>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Case = AIServiceError::Case;
using Questions = Result<QStringList, AIFailure>;

class AIServiceRequestTest : public AIServiceFixture
{
protected:
    [[nodiscard]] static QJsonObject message(const QString &role, const QString &content)
    {
        return QJsonObject{{u"role"_s, role}, {u"content"_s, content}};
    }

    /// The JSON body of a request with these messages.
    [[nodiscard]] static QJsonDocument body(const QJsonArray &messages, bool stream)
    {
        return QJsonDocument(QJsonObject{
            {u"model"_s, u"test-model"_s}, {u"messages"_s, messages}, {u"stream"_s, stream}});
    }

    [[nodiscard]] QJsonDocument sentBody() const
    {
        return QJsonDocument::fromJson(m_server.requests().last().body);
    }
};

TEST_F(AIServiceRequestTest, PostsModelMessagesAndStream)
{
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u" a reply\n"_s))));

    const Text text = waitFor(m_service.complete(u"Be brief."_s, u"Why?"_s));

    EXPECT_EQ(text, Text(u" a reply\n"_s));
    const ReceivedRequest &request = m_server.requests().first();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.target, "/v1/chat/completions");
    EXPECT_EQ(request.header("content-type"), "application/json");
    EXPECT_EQ(sentBody(),
              body({message(u"system"_s, u"Be brief."_s), message(u"user"_s, u"Why?"_s)}, false));
}

TEST_F(AIServiceRequestTest, SendsAMessageOfMegabytesWhole)
{
    const QString diff = u"+a line of code with an ü in it\n"_s.repeated(100'000);
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u"a"_s))));

    const Text text = waitFor(m_service.complete(u"Be brief."_s, diff));

    EXPECT_EQ(text, Text(u"a"_s));
    EXPECT_EQ(sentBody(),
              body({message(u"system"_s, u"Be brief."_s), message(u"user"_s, diff)}, false));
}

TEST_F(AIServiceRequestTest, SendsTheKeyAsABearer)
{
    useKey(AIProvider::openAI, u"sk-1"_s);
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u"a"_s))));

    waitFor(summarize());

    EXPECT_EQ(m_server.requests().first().header("authorization"), "Bearer sk-1");
}

TEST_F(AIServiceRequestTest, SendsTheKeyOfACustomProvider)
{
    useKey(AIProvider::custom, u"local"_s);
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u"a"_s))));

    waitFor(summarize());

    EXPECT_EQ(m_server.requests().first().header("authorization"), "Bearer local");
}

TEST_F(AIServiceRequestTest, SendsNoAuthorizationWithoutAKey)
{
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u"a"_s))));

    waitFor(summarize());

    EXPECT_TRUE(m_server.requests().first().header("authorization").isNull());
}

TEST_F(AIServiceRequestTest, AKeyWithALineBreakIsRefusedAndNeverTold)
{
    for (const QString &key : {u"sk-1\r\nX-Injected: 1"_s, u"sk-1\n"_s, u"sk-1\u007f"_s}) {
        m_center.post(aiConfigurationDidChange);
        useKey(AIProvider::openAI, key);

        const Text text = waitFor(summarize());
        const Received<QString> stream = waitFor(chat());

        ASSERT_FALSE(text.has_value());
        EXPECT_EQ(text.error().serviceError(), nullptr);
        EXPECT_FALSE(text.error().description().contains(u"sk-1"_s));
        EXPECT_EQ(stream.error, text.error());
    }
    EXPECT_EQ(m_server.connectionCount(), 0U);
}

TEST_F(AIServiceRequestTest, ASummaryIsTheTrimmedReply)
{
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u" \n Renames it. \n"_s))));

    const Text text = waitFor(m_service.summarizeFile(u"src/a.cpp"_s, u"-a\n+b"_s));

    EXPECT_EQ(text, Text(u"Renames it."_s));
    EXPECT_EQ(sentBody(), body({message(u"system"_s, prompts::fileSummary()),
                                message(u"user"_s, u"File: src/a.cpp\n\nDiff:\n-a\n+b"_s)},
                               false));
}

TEST_F(AIServiceRequestTest, SuggestionsAreReadFromTheReply)
{
    m_server.answer(
        ServerScript().send(httpAnswer(200, reply(u"```json\n[\"Why?\",\"How?\"]\n```"_s))));
    ChatMessage question;
    question.text = u"What?"_s;

    const Questions questions = waitFor(m_service.suggestQuestions(m_path, m_hunk, {question}));

    EXPECT_EQ(questions, Questions(QStringList{u"Why?"_s, u"How?"_s}));
    EXPECT_EQ(sentBody(), body({message(u"system"_s, prompts::suggestions()),
                                message(u"user"_s, u"File: src/a.cpp\n\nHunk:\n-a\n+b\n\n"
                                                   "Conversation so far:\nuser: What?"_s)},
                               false));
}

TEST_F(AIServiceRequestTest, AReplyWithoutAnArrayHoldsNoSuggestions)
{
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u"Ask about the tests."_s))));

    EXPECT_EQ(waitFor(m_service.suggestQuestions(m_path, m_hunk, {})), Questions(QStringList()));
}

TEST_F(AIServiceRequestTest, AFailedRequestForSuggestionsFails)
{
    m_server.answer(ServerScript().send(httpAnswer(401, "")));

    EXPECT_EQ(waitFor(m_service.suggestQuestions(m_path, m_hunk, {})),
              Questions(failure(AIFailure(error(Case::invalidAPIKey)))));
}

TEST_F(AIServiceRequestTest, AChatSendsTheHunkAndTheWholeConversation)
{
    m_server.answer(ServerScript().send(httpAnswer(200, events({u"Yes."_s}))));
    ChatMessage question;
    question.text = u" Why? "_s;
    ChatMessage answer;
    answer.role = ChatMessage::Role::assistant;

    const Received<QString> received =
        waitFor(m_service.chatAboutHunk(m_path, m_hunk, {question, answer, question}));

    EXPECT_EQ(received.values, QStringList{u"Yes."_s});
    EXPECT_EQ(sentBody(),
              body({message(u"system"_s, prompts::followUp(m_path, m_hunk).join(QString())),
                    message(u"user"_s, u" Why? "_s), message(u"assistant"_s, QString()),
                    message(u"user"_s, u" Why? "_s)},
                   true));
}

TEST_F(AIServiceRequestTest, AnExplanationSendsTheFullPicture)
{
    m_server.answer(ServerScript().send(httpAnswer(200, events({u"a"_s}))));

    waitFor(m_service.explainHunk(m_path, m_hunk, u" "_s));

    EXPECT_EQ(sentBody(),
              body({message(u"system"_s, prompts::hunkExplanation()),
                    message(u"user"_s, u"Full picture of this review:\n \n\nFile: src/a.cpp"
                                       "\n\nHunk:\n-a\n+b"_s)},
                   true));
}

class BadReplyTest : public AIServiceRequestTest, public testing::WithParamInterface<QByteArray>
{};

TEST_P(BadReplyTest, IsAnInvalidResponse)
{
    m_server.answer(ServerScript().send(httpAnswer(200, GetParam())));

    EXPECT_EQ(waitFor(summarize()), Text(failure(AIFailure(error(Case::invalidResponse)))));
}

INSTANTIATE_TEST_SUITE_P(AIService, BadReplyTest,
                         testing::Values(R"({"choices":[]})", "", "<html>busy</html>",
                                         R"({"choices":[{"message":{"content":null}}]})"));

struct StatusError
{
    int status = 0;
    AIServiceError error{};
};

AIServiceError failed(const QString &message)
{
    return AIServiceError{Case::requestFailed, message};
}

AIServiceError rejected()
{
    return AIServiceError{Case::invalidAPIKey, QString()};
}

const QList<StatusError> statusErrors{
    {-1, failed(u"Request failed (status -1)."_s)},
    {300, failed(u"Request failed (status 300)."_s)},
    {302, failed(u"Request failed (status 302)."_s)},
    {307, failed(u"Request failed (status 307)."_s)},
    {308, failed(u"Request failed (status 308)."_s)},
    {400, failed(u"Request failed (status 400)."_s)},
    {401, rejected()},
    {402, failed(u"Your AI provider account is out of credits. Add credits with your provider, "
                 "then try again."_s)},
    {403, rejected()},
    {404, failed(u"Request failed (status 404)."_s)},
    {407, failed(u"Request failed (status 407)."_s)},
    {418, failed(u"Request failed (status 418)."_s)},
    {429, failed(u"Rate limited by the provider — try again in a moment."_s)},
    {499, failed(u"Request failed (status 499)."_s)},
    {500, failed(u"The AI provider is having trouble (status 500). Try again shortly."_s)},
    {503, failed(u"The AI provider is having trouble (status 503). Try again shortly."_s)},
    {599, failed(u"The AI provider is having trouble (status 599). Try again shortly."_s)},
    {600, failed(u"Request failed (status 600)."_s)},
};

TEST(ErrorForStatus, HasASentenceForEachStatus)
{
    for (const StatusError &expected : statusErrors) {
        EXPECT_EQ(errorForStatus(expected.status), expected.error) << expected.status;
    }
}

TEST(ErrorForStatus, OnlyARejectedKeyHasALink)
{
    EXPECT_EQ(recoveryLabel(errorForStatus(402).description()), std::nullopt);
    EXPECT_EQ(recoveryLabel(errorForStatus(403).description()),
              u"Check your API key in Settings →"_s);
}

TEST_F(AIServiceRequestTest, EachStatusFailsEachKindOfRequest)
{
    for (const StatusError &expected : statusErrors) {
        if (expected.status < 0 || expected.status > 599) {
            continue; // No HTTP server sends these.
        }
        const AIFailure failed(expected.error);
        for (int i = 0; i < 3; ++i) {
            m_server.answer(
                ServerScript().send(httpAnswer(expected.status, events({u"not read"_s}))));
        }

        EXPECT_EQ(waitFor(summarize()), Text(failure(failed))) << expected.status;
        EXPECT_EQ(waitFor(chat()), (Received<QString>{{}, failed, true})) << expected.status;
        EXPECT_EQ(waitFor(explain()), (Received<HunkExplanationStreamEvent>{{}, failed, true}))
            << expected.status;
    }
}

TEST_F(AIServiceRequestTest, TheBodyOfAnErrorIsNotWaitedFor)
{
    m_server.answer(ServerScript().send(httpHead(503)).hold());

    const Text text = waitFor(summarize());
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_EQ(text, Text(failure(AIFailure(errorForStatus(503)))));
}

TEST_F(AIServiceRequestTest, EveryStatusOfSuccessIsOne)
{
    for (const int status : {200, 201, 299}) {
        m_server.answer(ServerScript().send(httpAnswer(status, reply(u"a"_s))));
        EXPECT_EQ(waitFor(summarize()), Text(u"a"_s));
    }
}

TEST_F(AIServiceRequestTest, ARedirectNeverReachesTheOtherHost)
{
    useKey(AIProvider::openAI, u"sk-1"_s);
    ScriptedServer other;
    const QByteArray location =
        "Location: " + other.url(u"/v1/chat/completions"_s).toEncoded() + "\r\n";
    for (const int status : {302, 307, 308}) {
        m_server.answer(ServerScript().send(httpAnswer(status, "", location)));
        EXPECT_EQ(waitFor(summarize()), Text(failure(AIFailure(errorForStatus(status)))));
    }
    EXPECT_EQ(other.connectionCount(), 0U);
}

TEST_F(AIServiceRequestTest, ARefusedConnectionIsThePlatformsSentence)
{
    {
        QTcpServer gone;
        ASSERT_TRUE(gone.listen(QHostAddress::LocalHost));
        m_settings.config.baseURL = u"http://127.0.0.1:%1/v1"_s.arg(gone.serverPort());
    }
    const AIFailure refused(PlatformError{u"Connection refused"_s});

    EXPECT_EQ(waitFor(summarize()), Text(failure(refused)));
    EXPECT_EQ(waitFor(chat()), (Received<QString>{{}, refused, true}));
}

TEST_F(AIServiceRequestTest, ABrokenReplyIsThePlatformsSentence)
{
    m_server.answer(ServerScript().send(httpHead(200, "Content-Length: 99\r\n") + "{").reset());

    EXPECT_EQ(waitFor(summarize()),
              Text(failure(AIFailure(PlatformError{u"Connection closed"_s}))));
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(AIServiceRequestTest, ASilentServerTimesOutAfterAMinute)
{
    m_server.answer(ServerScript().hold());
    std::optional<Text> text;
    const Job job(keep(summarize(), &text));
    spinUntil([&] { return m_server.holdingCount() == 1; });

    m_clock.advance(60s - 1ms);
    RunQueue::interfaceThread().runUntilIdle();
    EXPECT_FALSE(text.has_value());
    m_clock.advance(1ms);
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(text.value(), Text(failure(AIFailure(PlatformError{u"The request timed out."_s}))));
}

TEST_F(AIServiceRequestTest, RequestsRunSideBySide)
{
    m_server.answer(ServerScript().hold().send(httpAnswer(200, reply(u"a"_s))));
    std::optional<Text> slow;
    const Job job(keep(summarize(), &slow));
    spinUntil([&] { return m_server.holdingCount() == 1; });
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u"b"_s))));

    EXPECT_EQ(waitFor(summarize()), Text(u"b"_s));
    EXPECT_FALSE(slow.has_value());
    m_server.release();
    spinUntil([&] { return slow.has_value(); });
    EXPECT_EQ(slow.value(), Text(u"a"_s));
}

TEST_F(AIServiceRequestTest, CancellingClosesTheConnection)
{
    m_server.answer(ServerScript().send(httpHead(200) + "{").hold());
    std::optional<Text> text;
    Job job(keep(summarize(), &text));
    spinUntil([&] { return m_server.holdingCount() == 1; });

    job.cancel();
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_FALSE(text.has_value());
}

} // namespace
} // namespace vantrel::test
