#include "onboarding/CallbackRequest.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

std::optional<CallbackRequest> parseTarget(const QByteArray &target)
{
    return parseCallbackRequest("GET " + target + " HTTP/1.1\r\n\r\n");
}

QList<CallbackQueryItem> queryOf(const QByteArray &query)
{
    return parseTarget("/callback?" + query).value_or(CallbackRequest()).query;
}

CallbackQueryItem item(const QString &name, const QString &value)
{
    return CallbackQueryItem{name, value};
}

TEST(ParseCallbackRequest, ReadsMethodPathAndQuery)
{
    const CallbackRequest expected{
        u"GET"_s, u"/callback"_s, {item(u"code"_s, u"abc"_s), item(u"state"_s, u"1"_s)}};

    EXPECT_EQ(parseTarget("/callback?code=abc&state=1"), expected);
}

TEST(ParseCallbackRequest, IgnoresHeadersAndBody)
{
    const CallbackRequest expected{u"POST"_s, u"/"_s, {}};

    EXPECT_EQ(parseCallbackRequest("POST / HTTP/1.0\r\nHost: x\r\nA: \xff\r\n\r\nbody\r\n\r\n"),
              expected);
}

TEST(ParseCallbackRequest, NeedsTheWholeHead)
{
    const QByteArray request = "GET /callback?code=abc HTTP/1.1\r\nHost: localhost\r\n\r\n";

    for (qsizetype length = 0; length < request.size(); ++length) {
        EXPECT_EQ(parseCallbackRequest(request.left(length)), std::nullopt) << length;
    }
    EXPECT_NE(parseCallbackRequest(request), std::nullopt);
}

class NoRequestTest : public testing::TestWithParam<QByteArray>
{};

TEST_P(NoRequestTest, GivesNothing)
{
    EXPECT_EQ(parseCallbackRequest(GetParam() + "\r\n\r\n"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(ParseCallbackRequest, NoRequestTest,
                         testing::Values("", "GET", "GET /", "GET / HTTP/1.1 ", " GET / HTTP/1.1",
                                         " / HTTP/1.1", "GET  / HTTP/1.1", "GET\t/\tHTTP/1.1",
                                         "GET / HTTP", "GET / http/1.1", "GET callback HTTP/1.1",
                                         "GET  HTTP/1.1", "GET http://localhost/ HTTP/1.1",
                                         "GET /\xff HTTP/1.1", "GET /\xc3 HTTP/1.1",
                                         "\r\nGET / HTTP/1.1", "\x16\x03\x01\x02"));

TEST(ParseCallbackRequest, ABlankLineInFrontIsNoRequest)
{
    EXPECT_EQ(parseCallbackRequest("\r\n\r\nGET / HTTP/1.1\r\n\r\n"), std::nullopt);
}

TEST(ParseCallbackRequest, DoesNotDecodeThePath)
{
    EXPECT_EQ(parseTarget("/call%62ack")->path, u"/call%62ack"_s);
    EXPECT_EQ(parseTarget("/\xc3\xa4")->path, u"/ä"_s);
}

TEST(ParseCallbackRequest, TheFirstQuestionMarkBeginsTheQuery)
{
    EXPECT_EQ(parseTarget("/callback?")->query, QList<CallbackQueryItem>());
    EXPECT_EQ(parseTarget("/callback?code=a?b")->path, u"/callback"_s);
    EXPECT_EQ(queryOf("code=a?b"), QList{item(u"code"_s, u"a?b"_s)});
}

TEST(ParseCallbackRequest, SplitsThePiecesAtTheirFirstEqualsSign)
{
    const QList<CallbackQueryItem> expected{item(u"a"_s, u"1=2"_s),
                                            CallbackQueryItem{u"b"_s, std::nullopt},
                                            item(u"c"_s, u""_s), item(u""_s, u"d"_s)};

    EXPECT_EQ(queryOf("a=1=2&&b&c=&=d&"), expected);
}

TEST(ParseCallbackRequest, DecodesNamesAndValues)
{
    EXPECT_EQ(queryOf("c%6Fde=a%2Bb%20%C3%A4%3D%26"), QList{item(u"code"_s, u"a+b ä=&"_s)});
}

TEST(ParseCallbackRequest, KeepsAPlusInACode)
{
    EXPECT_EQ(queryOf("code=a+b&other=c+d"),
              QList({item(u"code"_s, u"a+b"_s), item(u"other"_s, u"c+d"_s)}));
}

TEST(ParseCallbackRequest, APlusInAnErrorIsASpace)
{
    EXPECT_EQ(queryOf("error=access+denied&error_description=a+b%2Bc&err%6Fr=d+e"),
              QList({item(u"error"_s, u"access denied"_s), item(u"error_description"_s, u"a b+c"_s),
                     item(u"error"_s, u"d e"_s)}));
}

TEST(ParseCallbackRequest, KeepsWhatCannotBeDecoded)
{
    EXPECT_EQ(queryOf("code=%&%zz=%41%4&a=%ff&b=%C3"),
              QList({item(u"code"_s, u"%"_s), item(u"%zz"_s, u"%41%4"_s), item(u"a"_s, u"%ff"_s),
                     item(u"b"_s, u"%C3"_s)}));
}

TEST(ParseCallbackRequest, AnErrorThatCannotBeDecodedHasSpacesForItsPluses)
{
    EXPECT_EQ(queryOf("error=a+%zz"), QList{item(u"error"_s, u"a %zz"_s)});
}

TEST(CallbackRequest, GivesTheFirstValueOfAName)
{
    const CallbackRequest request{u"GET"_s,
                                  u"/"_s,
                                  {CallbackQueryItem{u"a"_s, std::nullopt}, item(u"a"_s, u"1"_s),
                                   item(u"b"_s, u"2"_s), item(u"b"_s, u"3"_s)}};

    EXPECT_EQ(request.firstValue(u"a"_s), std::nullopt);
    EXPECT_EQ(request.firstValue(u"b"_s), u"2"_s);
    EXPECT_EQ(request.firstValue(u"c"_s), std::nullopt);
}

} // namespace
} // namespace vantrel
