#include "ai/CompletionCoding.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

ChatCompletionRequest requestWith(const QString &content)
{
    ChatCompletionRequest request;
    request.model = u" gpt-6-luna "_s;
    request.messages = {ChatMessagePayload{u"system"_s, {u"Be brief."_s}},
                        ChatMessagePayload{u"user"_s, {content}}};
    request.stream = true;
    return request;
}

TEST(EncodeRequest, HoldsExactlyModelMessagesAndStream)
{
    const QByteArray body = encodeRequest(requestWith(u"\"a\"\n\\b\tä 😀 \u0001"_s));

    const QJsonObject expected{
        {u"model"_s, u" gpt-6-luna "_s},
        {u"messages"_s,
         QJsonArray{
             QJsonObject{{u"role"_s, u"system"_s}, {u"content"_s, u"Be brief."_s}},
             QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u"\"a\"\n\\b\tä 😀 \u0001"_s}}}},
        {u"stream"_s, true},
    };
    EXPECT_EQ(QJsonDocument::fromJson(body), QJsonDocument(expected));
}

TEST(EncodeRequest, ALongTextIsWhole)
{
    QString text;
    while (text.size() < 300'000) {
        text +=
            u"a\"\n\u0001ä😀"_s; // Seven characters, so that no power of two falls between them.
    }

    const QJsonObject body = QJsonDocument::fromJson(encodeRequest(requestWith(text))).object();

    EXPECT_EQ(body["messages"_L1][1]["content"_L1].toString(), text);
}

TEST(EncodeRequest, TheContentIsItsPiecesInOrder)
{
    ChatCompletionRequest request = requestWith(QString());
    request.messages[1].content = {u"File: a\n"_s, QString(), u"\"-b\""_s, u"\n+ä"_s};

    const QJsonObject body = QJsonDocument::fromJson(encodeRequest(request)).object();

    EXPECT_EQ(body["messages"_L1][1]["content"_L1].toString(), u"File: a\n\"-b\"\n+ä"_s);
}

TEST(EncodeRequest, StreamIsFalseForASingleRequest)
{
    ChatCompletionRequest request = requestWith(u"a"_s);
    request.stream = false;

    const QJsonObject body = QJsonDocument::fromJson(encodeRequest(request)).object();

    EXPECT_EQ(body["stream"_L1], QJsonValue(false));
}

TEST(EncodeRequest, HalvesOfSurrogatePairsAreSentAsQuestionMarks)
{
    const QString halves = QChar(0xd83d) + u"a"_s + QChar(0xde00);

    const QByteArray body = encodeRequest(requestWith(halves));

    EXPECT_TRUE(body.isValidUtf8());
    const QJsonObject object = QJsonDocument::fromJson(body).object();
    EXPECT_EQ(object["messages"_L1][1]["content"_L1].toString(), u"?a?"_s);
}

TEST(EncodeRequest, ATextWithHalvesKeepsItsByteOrderMark)
{
    const QByteArray body = encodeRequest(requestWith(u"\uFEFFa"_s + QChar(0xd83d)));

    EXPECT_TRUE(body.contains("\"\xef\xbb\xbf"
                              "a?\""))
        << body.toStdString();
}

TEST(DecodeResponseContent, KeepsByteOrderMarks)
{
    EXPECT_EQ(decodeResponseContent(
                  "{\"choices\":[{\"message\":{\"content\":\"\xef\xbb\xbf\xef\xbb\xbf\"}}]}"),
              u"\uFEFF\uFEFF"_s);
}

TEST(DecodeResponseContent, IsTheFirstChoicesMessage)
{
    EXPECT_EQ(decodeResponseContent(R"({"id":"x","usage":{"n":1},"choices":[
                  {"index":0,"message":{"role":"assistant","content":" one\n"}},
                  {"message":{"content":"two"}}]})"),
              u" one\n"_s);
}

TEST(DecodeResponseContent, MayBeEmpty)
{
    EXPECT_EQ(decodeResponseContent(R"({"choices":[{"message":{"content":""}}]})"), QString());
}

class UndecodableResponseTest : public testing::TestWithParam<QByteArray>
{};

TEST_P(UndecodableResponseTest, GivesNothing)
{
    EXPECT_EQ(decodeResponseContent(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    DecodeResponseContent, UndecodableResponseTest,
    testing::Values("", "no json", "[]", "{}", R"({"choices":[]})", R"({"choices":{}})",
                    R"({"choices":[{}]})", R"({"choices":[{"message":{}}]})",
                    R"({"choices":[{"message":{"content":null}}]})",
                    R"({"choices":[{"message":{"content":7}}]})",
                    R"({"choices":[{"message":{"content":"a"}},{"message":{}}]})",
                    R"({"choices":[{"message":{"content":"a"}}]} and more)",
                    "{\"choices\":[{\"message\":{\"content\":\"\xff\"}}]}"));

TEST(DecodeChunkContent, IsTheFirstChoicesDelta)
{
    EXPECT_EQ(decodeChunkContent(R"({"id":"x","choices":[{"index":0,"finish_reason":null,
                  "delta":{"role":"assistant","content":" a"}},{"delta":{"content":"b"}}]})"),
              u" a"_s);
}

TEST(DecodeChunkContent, HalfACharacterIsPassedOn)
{
    EXPECT_EQ(decodeChunkContent(R"({"choices":[{"delta":{"content":"\ud83d"}}]})"),
              QString(QChar(0xd83d)));
}

class ChunkWithoutContentTest : public testing::TestWithParam<QByteArray>
{};

TEST_P(ChunkWithoutContentTest, GivesNothing)
{
    EXPECT_EQ(decodeChunkContent(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(DecodeChunkContent, ChunkWithoutContentTest,
                         testing::Values("", "{", R"({"choices":[]})",
                                         R"({"choices":[{"delta":{}}]})",
                                         R"({"choices":[{"delta":{"content":null}}]})",
                                         R"({"choices":[{"delta":{"content":1}}]})",
                                         R"({"choices":[{"delta":null}]})", R"({"choices":[{}]})",
                                         R"({"choices":[{"delta":{"content":"a"}},{"delta":"b"}]})",
                                         R"({"error":{"message":"overloaded"}})"));

} // namespace
} // namespace vantrel
