#include "onboarding/OpenRouterSignIn.h"

#include "onboarding/CallbackAnswer.h"
#include "onboarding/LoopbackClient.h"
#include "platform/http/NetworkHttpLoader.h"
#include "platform/jobs/RunQueue.h"
#include "support/ManualClock.h"
#include "support/Running.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

#include <chrono>
#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Case = OpenRouterSignInError::Case;
using Outcome = Result<QString, OpenRouterSignInError>;
using SigningIn = Running<Outcome>;

const PKCE examplePKCE = pkceOf(u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s);
const QByteArray success = responseBytes(CallbackPage::success);

Outcome failed(Case kind, const std::optional<QString> &message = {}, int status = 0)
{
    return failure(OpenRouterSignInError{kind, message, status});
}

/// A sign-in whose browser and whose OpenRouter are this test.
class OpenRouterSignInTest : public testing::Test
{
protected:
    OpenRouterSignInTest()
    {
        makeSignIn([] { return examplePKCE; });
    }

    void makeSignIn(std::function<PKCE()> makePKCE)
    {
        OpenRouterSignIn::Settings settings;
        settings.makePKCE = std::move(makePKCE);
        settings.addresses.site = QUrl(u"https://site.test"_s);
        settings.addresses.api = openRouter.url(QString());
        signIn = std::make_unique<OpenRouterSignIn>(
            loader, clock,
            [this](const QUrl &url) {
                pages.append(url);
                return hasBrowser;
            },
            settings);
    }

    /// Begins a sign-in and waits until its page is open.
    std::unique_ptr<SigningIn> begin()
    {
        auto signingIn = std::make_unique<SigningIn>(signIn->obtainAPIKey());
        RunQueue::interfaceThread().runUntilIdle();
        EXPECT_FALSE(pages.isEmpty());
        return signingIn;
    }

    /// What the browser is sent back to, by the page that was opened last.
    [[nodiscard]] QUrl callbackURL() const
    {
        const QUrlQuery query(pages.constLast());
        return QUrl(query.queryItemValue(u"callback_url"_s, QUrl::FullyDecoded));
    }

    [[nodiscard]] quint16 callbackPort() const { return quint16(callbackURL().port()); }

    /// The browser comes back; gives the page that it shows.
    [[nodiscard]] QByteArray comeBack(const QByteArray &query) const
    {
        return answerFrom(callbackPort(), "GET " + callbackURL().path().toUtf8() + '?' + query +
                                              " HTTP/1.1\r\n\r\n");
    }

    static Outcome waitFor(const SigningIn &signingIn)
    {
        spinUntil([&signingIn] { return signingIn.isOver(); });
        return signingIn.value().value_or(Outcome(QString()));
    }

    /// A whole sign-in with this answer to the exchange.
    Outcome exchangeWith(ServerScript script)
    {
        openRouter.answer(std::move(script));
        const auto signingIn = begin();
        EXPECT_EQ(comeBack("code=abc"), success);
        return waitFor(*signingIn);
    }

    void expectNothingLeftBehind() const
    {
        EXPECT_FALSE(isListening(callbackPort(), LoopbackFamily::ipv4));
        EXPECT_FALSE(isListening(callbackPort(), LoopbackFamily::ipv6));
        EXPECT_EQ(clock.sleeperCount(), 0U);
    }

    ScriptedServer openRouter{};
    ManualClock clock{};
    NetworkHttpLoader loader{clock};
    bool hasBrowser = true;
    QList<QUrl> pages{};
    std::unique_ptr<OpenRouterSignIn> signIn{};
};

TEST_F(OpenRouterSignInTest, BringsTheKeyOfANewAccountOfTheBrowser)
{
    const Outcome key =
        exchangeWith(ServerScript().send(httpAnswer(200, R"({"key":" sk-or-1\n"})")));

    EXPECT_EQ(key, u"sk-or-1"_s);
    expectNothingLeftBehind();
}

TEST_F(OpenRouterSignInTest, OpensThePageWithTheChallengeAndAListenersAddress)
{
    const auto signingIn = begin();

    ASSERT_EQ(pages.size(), 1);
    const QUrl page = pages.first();
    EXPECT_EQ(page.adjusted(QUrl::RemoveQuery), QUrl(u"https://site.test/auth"_s));
    EXPECT_EQ(QUrlQuery(page).queryItemValue(u"code_challenge"_s),
              u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"_s);
    EXPECT_FALSE(page.toString().contains(examplePKCE.verifier));
    EXPECT_EQ(callbackURL().host(), u"localhost"_s);
    EXPECT_EQ(callbackURL().path(), u"/callback"_s);
    EXPECT_TRUE(isListening(callbackPort(), LoopbackFamily::ipv4));
}

TEST_F(OpenRouterSignInTest, ExchangesTheCodeWithTheVerifierAndWithoutAKey)
{
    exchangeWith(ServerScript().send(httpAnswer(200, R"({"key":"sk-or-1"})")));

    ASSERT_EQ(openRouter.requests().size(), 1);
    const ReceivedRequest &request = openRouter.requests().first();
    const QJsonObject body{{u"code"_s, u"abc"_s},
                           {u"code_verifier"_s, examplePKCE.verifier},
                           {u"code_challenge_method"_s, u"S256"_s}};
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.target, "/api/v1/auth/keys");
    EXPECT_EQ(request.header("content-type"), "application/json");
    EXPECT_TRUE(request.header("authorization").isNull());
    EXPECT_EQ(QJsonDocument::fromJson(request.body).object(), body);
}

TEST_F(OpenRouterSignInTest, EachSignInHasItsOwnPairAndListener)
{
    makeSignIn(generatePKCE);
    const auto first = begin();
    const QUrl firstPage = pages.first();
    const quint16 firstPort = callbackPort();
    const auto second = begin();

    EXPECT_NE(QUrlQuery(pages.last()).queryItemValue(u"code_challenge"_s),
              QUrlQuery(firstPage).queryItemValue(u"code_challenge"_s));
    EXPECT_NE(callbackPort(), firstPort);
    EXPECT_TRUE(isListening(firstPort, LoopbackFamily::ipv4));
}

TEST_F(OpenRouterSignInTest, ADenialIsToldInTheProvidersWords)
{
    const auto signingIn = begin();

    EXPECT_EQ(comeBack("error=access_denied&error_description=You+said+no"),
              responseBytes(CallbackPage::providerError));
    const Outcome outcome = waitFor(*signingIn);

    EXPECT_EQ(outcome, failed(Case::denied, u"You said no"_s));
    EXPECT_EQ(outcome.error().description(),
              u"OpenRouter didn't finish sign-in (You said no). Try again."_s);
    EXPECT_TRUE(openRouter.requests().isEmpty());
    expectNothingLeftBehind();
}

TEST_F(OpenRouterSignInTest, ABrowserThatCannotBeOpenedIsTold)
{
    hasBrowser = false;

    const auto signingIn = begin();

    EXPECT_EQ(waitFor(*signingIn), failed(Case::couldNotOpenBrowser));
    expectNothingLeftBehind();
}

TEST_F(OpenRouterSignInTest, ABrowserThatDoesNotComeBackIsWaitedForTenMinutes)
{
    const auto signingIn = begin();

    clock.advance(600s - 1ms);
    RunQueue::interfaceThread().runUntilIdle();
    EXPECT_FALSE(signingIn->isOver());
    clock.advance(1ms);
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(waitFor(*signingIn), failed(Case::timedOut));
    expectNothingLeftBehind();
}

TEST_F(OpenRouterSignInTest, ABrowserThatComesBackInTheLastMomentIsInTime)
{
    openRouter.answer(ServerScript().send(httpAnswer(200, R"({"key":"sk-or-1"})")));
    const auto signingIn = begin();
    clock.advance(600s - 1ms);
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(comeBack("code=abc"), success);

    EXPECT_EQ(waitFor(*signingIn), u"sk-or-1"_s);
}

TEST_F(OpenRouterSignInTest, OtherRequestsOfTheBrowserDoNotEndTheWait)
{
    const auto signingIn = begin();
    EXPECT_EQ(answerFrom(callbackPort(), "GET /favicon.ico HTTP/1.1\r\n\r\n"),
              responseBytes(CallbackPage::notFound));
    EXPECT_EQ(comeBack("state=1"), responseBytes(CallbackPage::notFound));
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_FALSE(signingIn->isOver());
}

TEST_F(OpenRouterSignInTest, ARefusedExchangeIsToldInOpenRoutersWords)
{
    const Outcome outcome =
        exchangeWith(ServerScript().send(httpAnswer(403, R"({"error":{"message":"Forbidden"}})")));

    EXPECT_EQ(outcome, failed(Case::exchangeFailed, u"Forbidden"_s, 403));
    EXPECT_EQ(outcome.error().description(),
              u"OpenRouter couldn't create a key (Forbidden). Try again."_s);
}

TEST_F(OpenRouterSignInTest, ARefusedExchangeWithoutWordsIsToldByItsStatus)
{
    const Outcome outcome = exchangeWith(ServerScript().send(httpAnswer(403, "")));

    EXPECT_EQ(outcome.error().description(),
              u"OpenRouter couldn't create a key (status 403). Try again."_s);
    expectNothingLeftBehind();
}

TEST_F(OpenRouterSignInTest, AKeyOfSpacesIsUnexpected)
{
    EXPECT_EQ(exchangeWith(ServerScript().send(httpAnswer(200, R"({"key":"   "})"))),
              failed(Case::invalidExchangeResponse));
}

TEST_F(OpenRouterSignInTest, ARedirectedExchangeIsNotFollowed)
{
    const Outcome outcome = exchangeWith(
        ServerScript().send(httpAnswer(307, "", "Location: http://127.0.0.1:9/elsewhere\r\n")));

    EXPECT_EQ(outcome, failed(Case::exchangeFailed, {}, 307));
    EXPECT_EQ(openRouter.requests().size(), 1);
}

TEST_F(OpenRouterSignInTest, AnAnswerThatIsNotHttpIsAFailureOfTheNetwork)
{
    const Outcome outcome = exchangeWith(ServerScript().send("hello\r\n\r\n"));

    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, Case::network);
    EXPECT_EQ(openRouter.requests().size(), 1);
}

TEST_F(OpenRouterSignInTest, AnAnswerWithoutEndIsUnexpected)
{
    const Outcome outcome = exchangeWith(
        ServerScript().send(httpHead(200)).sendRepeatedly(QByteArray(65'536, ' '), 10'000).hold());

    EXPECT_EQ(outcome, failed(Case::invalidExchangeResponse));
    EXPECT_LT(openRouter.sentBytes(), 100'000'000);
}

TEST_F(OpenRouterSignInTest, AnExchangeThatBreaksOffIsAFailureOfTheNetwork)
{
    const Outcome outcome = exchangeWith(ServerScript().reset());

    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, Case::network);
    EXPECT_FALSE(outcome.error().message.value_or(QString()).isEmpty());
    expectNothingLeftBehind();
}

TEST_F(OpenRouterSignInTest, AnAnswerThatBreaksOffIsAFailureOfTheNetwork)
{
    const Outcome outcome = exchangeWith(
        ServerScript().send("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{\"key\":").reset());

    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, Case::network);
}

TEST_F(OpenRouterSignInTest, AnExchangeThatIsNotAnsweredEndsAfterAMinute)
{
    openRouter.answer(ServerScript().hold());
    const auto signingIn = begin();
    EXPECT_EQ(comeBack("code=abc"), success);
    spinUntil([this] { return openRouter.holdingCount() == 1; });

    clock.advance(60s);

    EXPECT_EQ(waitFor(*signingIn), failed(Case::network, u"The request timed out."_s));
}

TEST_F(OpenRouterSignInTest, TheListenerAnswersDuringTheExchange)
{
    openRouter.answer(ServerScript().hold().send(httpAnswer(200, R"({"key":"sk-or-1"})")));
    const auto signingIn = begin();
    EXPECT_EQ(comeBack("code=abc"), success);
    spinUntil([this] { return openRouter.holdingCount() == 1; });

    EXPECT_EQ(comeBack("code=def"), success);
    openRouter.release();

    EXPECT_EQ(waitFor(*signingIn), u"sk-or-1"_s);
    EXPECT_EQ(openRouter.requests().size(), 1);
    expectNothingLeftBehind();
}

TEST_F(OpenRouterSignInTest, CancellingWhileTheBrowserIsOpenStopsTheListenerAtOnce)
{
    const auto signingIn = begin();

    signingIn->cancel();

    expectNothingLeftBehind();
    EXPECT_FALSE(signingIn->isOver());
}

TEST_F(OpenRouterSignInTest, CancellingDuringTheExchangeClosesItsConnection)
{
    openRouter.answer(ServerScript().hold());
    const auto signingIn = begin();
    EXPECT_EQ(comeBack("code=abc"), success);
    spinUntil([this] { return openRouter.holdingCount() == 1; });

    signingIn->cancel();

    expectNothingLeftBehind();
    spinUntil([this] { return openRouter.openConnectionCount() == 0; });
}

TEST_F(OpenRouterSignInTest, CancellingWhileTheAnswerArrivesClosesItsConnection)
{
    openRouter.answer(ServerScript().send("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{").hold());
    const auto signingIn = begin();
    EXPECT_EQ(comeBack("code=abc"), success);
    spinUntil([this] { return openRouter.holdingCount() == 1; });

    signingIn->cancel();

    expectNothingLeftBehind();
    spinUntil([this] { return openRouter.openConnectionCount() == 0; });
}

TEST_F(OpenRouterSignInTest, CancellingBeforeItRanOpensNothing)
{
    SigningIn signingIn(signIn->obtainAPIKey());

    signingIn.cancel();
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_TRUE(pages.isEmpty());
}

TEST_F(OpenRouterSignInTest, CancellingFromTheOpeningOfTheBrowserLeavesNothingBehind)
{
    std::unique_ptr<SigningIn> signingIn;
    OpenRouterSignIn cancelled(loader, clock, [&](const QUrl &url) {
        pages.append(url);
        signingIn->cancel();
        return true;
    });
    signingIn = std::make_unique<SigningIn>(cancelled.obtainAPIKey());

    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(pages.size(), 1);
    EXPECT_FALSE(signingIn->isOver());
    expectNothingLeftBehind();
}

} // namespace
} // namespace vantrel::test
