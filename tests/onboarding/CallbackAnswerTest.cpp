#include "onboarding/CallbackAnswer.h"

#include <gtest/gtest.h>

#include <QUrl>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using Outcome = std::optional<CallbackOutcome>;

Outcome code(const QString &text)
{
    return CallbackOutcome(text);
}

Outcome denial(const QString &message)
{
    return CallbackOutcome(failure(
        LoopbackCallbackServerError{LoopbackCallbackServerError::Case::providerError, message}));
}

CallbackAnswer answerToTarget(const QByteArray &target, const QByteArray &method = "GET")
{
    const auto request = parseCallbackRequest(method + ' ' + target + " HTTP/1.1\r\n\r\n");
    return answerTo(request.value_or(CallbackRequest()), u"/callback"_s);
}

/// The error that a redirect with this description reports.
Outcome outcomeOfDescription(const QString &description)
{
    return answerToTarget("/callback?error_description=" + QUrl::toPercentEncoding(description))
        .outcome;
}

void expectNotFound(const CallbackAnswer &answer)
{
    EXPECT_EQ(answer.page, CallbackPage::notFound);
    EXPECT_EQ(answer.outcome, std::nullopt);
}

TEST(AnswerTo, ACodeSucceeds)
{
    const CallbackAnswer answer = answerToTarget("/callback?code=abc");

    EXPECT_EQ(answer.page, CallbackPage::success);
    EXPECT_EQ(answer.outcome, code(u"abc"_s));
}

TEST(AnswerTo, KeepsThePlusOfACode)
{
    EXPECT_EQ(answerToTarget("/callback?code=a+b").outcome, code(u"a+b"_s));
}

TEST(AnswerTo, ACodeWinsOverAnError)
{
    EXPECT_EQ(answerToTarget("/callback?error=x&code=abc").outcome, code(u"abc"_s));
}

TEST(AnswerTo, TheFirstCodeCounts)
{
    EXPECT_EQ(answerToTarget("/callback?code=abc&code=def").outcome, code(u"abc"_s));
    expectNotFound(answerToTarget("/callback?code=&code=def"));
    expectNotFound(answerToTarget("/callback?code&code=def"));
}

TEST(AnswerTo, OtherMethodsAndPathsAreNotFound)
{
    expectNotFound(answerToTarget("/callback?code=abc", "POST"));
    expectNotFound(answerToTarget("/callback?code=abc", "HEAD"));
    expectNotFound(answerToTarget("/callback?code=abc", "get"));
    expectNotFound(answerToTarget("/favicon.ico"));
    expectNotFound(answerToTarget("/callback/?code=abc"));
    expectNotFound(answerToTarget("/Callback?code=abc"));
    expectNotFound(answerToTarget("/?code=abc"));
    expectNotFound(answerToTarget("//callback?code=abc"));
}

TEST(AnswerTo, NeitherCodeNorErrorIsNotFound)
{
    expectNotFound(answerToTarget("/callback"));
    expectNotFound(answerToTarget("/callback?code="));
    expectNotFound(answerToTarget("/callback?state=1"));
    expectNotFound(answerToTarget("/callback?error=&error_description="));
}

TEST(AnswerTo, TheDescriptionOfAnErrorIsReported)
{
    const CallbackAnswer answer =
        answerToTarget("/callback?error=access_denied&error_description=access+denied");

    EXPECT_EQ(answer.page, CallbackPage::providerError);
    EXPECT_EQ(answer.outcome, denial(u"access denied"_s));
}

TEST(AnswerTo, WithoutADescriptionTheErrorItselfIsReported)
{
    EXPECT_EQ(answerToTarget("/callback?error=access_denied").outcome, denial(u"access_denied"_s));
    EXPECT_EQ(answerToTarget("/callback?error=x&error_description=+%0A").outcome, denial(u"x"_s));
    EXPECT_EQ(answerToTarget("/callback?code=&error=x").outcome, denial(u"x"_s));
}

TEST(AnswerTo, AnErrorLosesItsControlCharactersAndOuterSpace)
{
    EXPECT_EQ(outcomeOfDescription(u"\t a\u0000b\r\nc\u001bd\u007fe\u0085f \n"_s),
              denial(u"abcdef"_s));
    EXPECT_EQ(outcomeOfDescription(u"a\u202eb"_s), denial(u"ab"_s));
    EXPECT_EQ(outcomeOfDescription(u"\u0001\u0002 "_s), std::nullopt);
}

TEST(AnswerTo, ALongErrorIsCutBehindTwoHundredCharacters)
{
    const QString twoHundred(200, u'a');

    EXPECT_EQ(outcomeOfDescription(QString(300, u'a')), denial(twoHundred + u'…'));
    EXPECT_EQ(outcomeOfDescription(QString(201, u'a')), denial(twoHundred + u'…'));
    EXPECT_EQ(outcomeOfDescription(twoHundred), denial(twoHundred));
}

TEST(AnswerTo, CharactersOfALongErrorAreCountedAsPeopleDo)
{
    const QString flag = u"\U0001F1E9\U0001F1EA"_s; // One character in four code units.

    EXPECT_EQ(outcomeOfDescription(flag.repeated(200)), denial(flag.repeated(200)));
    EXPECT_EQ(outcomeOfDescription(flag.repeated(201)), denial(flag.repeated(200) + u'…'));
}

TEST(ResponseBytes, AreTheWholePageOfASuccess)
{
    const QByteArray body =
        R"(<!doctype html><html><head><meta charset="utf-8"><title>Vantrel</title></head><body style="font: 15px -apple-system, system-ui, sans-serif; max-width: 420px; margin: 72px auto; padding: 0 24px; color: #2A2723"><h1 style="font-size: 18px; color: #1E1B17">Return to Vantrel</h1><p>Vantrel is finishing setup. You can close this tab.</p></body></html>)";
    const QByteArray head = "HTTP/1.1 200 OK\r\n"
                            "Content-Type: text/html; charset=utf-8\r\n"
                            "Content-Length: " +
                            QByteArray::number(body.size()) +
                            "\r\n"
                            "Cache-Control: no-store\r\n"
                            "Connection: close\r\n"
                            "\r\n";

    EXPECT_EQ(responseBytes(CallbackPage::success), head + body);
}

TEST(ResponseBytes, NameTheStatusAndTheHeadingOfEveryPage)
{
    const auto isPage = [](CallbackPage page, const QByteArray &status, const QByteArray &text) {
        const QByteArray &bytes = responseBytes(page);
        return bytes.startsWith("HTTP/1.1 " + status + "\r\n") &&
               bytes.endsWith(text + "</p></body></html>");
    };

    EXPECT_TRUE(isPage(CallbackPage::providerError, "200 OK",
                       ">Sign-in didn't finish</h1><p>Go back to Vantrel to try again."));
    EXPECT_TRUE(isPage(CallbackPage::notFound, "404 Not Found", ">Not found</h1><p>"));
    EXPECT_TRUE(isPage(CallbackPage::badRequest, "400 Bad Request", ">Bad request</h1><p>"));
}

TEST(ResponseBytes, AreBuiltOnce)
{
    EXPECT_EQ(&responseBytes(CallbackPage::success), &responseBytes(CallbackPage::success));
}

} // namespace
} // namespace vantrel
