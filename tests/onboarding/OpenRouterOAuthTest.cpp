#include "onboarding/OpenRouterOAuth.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using Case = OpenRouterSignInError::Case;
using OpenRouterOAuth::keyFromResponse;

OpenRouterSignInError refusal(int status, const std::optional<QString> &message = {})
{
    return {Case::exchangeFailed, message, status};
}

const OpenRouterSignInError invalidResponse{Case::invalidExchangeResponse, {}, 0};

TEST(OpenRouterOAuth, LeadsToOpenRoutersSiteAndApi)
{
    const OpenRouterOAuth::Addresses addresses;

    EXPECT_EQ(addresses.site, QUrl(u"https://openrouter.ai"_s));
    EXPECT_EQ(addresses.api, QUrl(u"https://openrouter.ai"_s));
}

TEST(OpenRouterOAuth, ThePageIsGivenTheCallbackAndTheChallenge)
{
    const QUrl page = OpenRouterOAuth::authorizationURL(
        QUrl(u"https://site.test"_s), QUrl(u"http://localhost:40000/callback"_s), u"a-b_c"_s);

    EXPECT_EQ(page.toString(QUrl::FullyEncoded),
              u"https://site.test/auth?callback_url=http%3A%2F%2Flocalhost%3A40000%2Fcallback"
              "&code_challenge=a-b_c&code_challenge_method=S256&key_label=Vantrel"_s);
}

TEST(OpenRouterOAuth, ThePagesItemsReadBackAsTheyWere)
{
    const QUrl callback(u"http://localhost:1/a?b=c&d=%C3%A4+e#f"_s);
    const QUrl page =
        OpenRouterOAuth::authorizationURL(QUrl(u"http://127.0.0.1:9"_s), callback, u"x+y&z"_s);

    const QUrlQuery query(page);

    EXPECT_EQ(query.queryItemValue(u"callback_url"_s, QUrl::FullyDecoded),
              u"http://localhost:1/a?b=c&d=%C3%A4+e#f"_s);
    EXPECT_EQ(query.queryItemValue(u"code_challenge"_s, QUrl::FullyDecoded), u"x+y&z"_s);
}

TEST(OpenRouterOAuth, ExchangesACodeByPostingIt)
{
    const HttpRequest request =
        OpenRouterOAuth::keyExchangeRequest(QUrl(u"https://api.test"_s), u"a\"+b"_s, u"v-1"_s);

    const QList<std::pair<QByteArray, QByteArray>> headers{{"Content-Type", "application/json"}};
    const QJsonObject body{{u"code"_s, u"a\"+b"_s},
                           {u"code_verifier"_s, u"v-1"_s},
                           {u"code_challenge_method"_s, u"S256"_s}};
    EXPECT_EQ(request.url, QUrl(u"https://api.test/api/v1/auth/keys"_s));
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.headers, headers);
    EXPECT_EQ(QJsonDocument::fromJson(request.body).object(), body);
    EXPECT_EQ(request.timeout, std::chrono::seconds(60));
}

TEST(OpenRouterOAuth, ReadsAndTrimsTheKey)
{
    EXPECT_EQ(keyFromResponse(200, R"({"key":"sk-or-1"})"), u"sk-or-1"_s);
    EXPECT_EQ(keyFromResponse(299, R"({"key":"\n sk-or-1 \r\n","user_id":"u"})"), u"sk-or-1"_s);
    EXPECT_EQ(keyFromResponse(200, "{\"key\":\"\xef\xbb\xbfsk-or-1\"}"), u"\uFEFFsk-or-1"_s);
}

class InvalidExchangeResponseTest : public testing::TestWithParam<QByteArray>
{};

TEST_P(InvalidExchangeResponseTest, IsUnexpected)
{
    EXPECT_EQ(keyFromResponse(200, GetParam()).error(), invalidResponse);
}

INSTANTIATE_TEST_SUITE_P(OpenRouterOAuth, InvalidExchangeResponseTest,
                         testing::Values("", "sk-or-1", "{}", R"("sk-or-1")", R"({"key":null})",
                                         R"({"key":7})", R"({"key":""})", R"({"key":"   "})",
                                         R"({"key":" \n\t"})", R"({"key":"sk-or-1")",
                                         "{\"key\":\"\xff\"}"));

TEST(OpenRouterOAuth, AnAnswerThatIsNotHttpIsUnexpected)
{
    EXPECT_EQ(keyFromResponse(-1, R"({"key":"sk-or-1"})").error(), invalidResponse);
}

TEST(OpenRouterOAuth, ARefusalIsToldInTheWordsOfOpenRouter)
{
    EXPECT_EQ(keyFromResponse(403, R"({"error":{"message":"Forbidden","code":403}})").error(),
              refusal(403, u"Forbidden"_s));
    EXPECT_EQ(keyFromResponse(500, R"({"error":{"message":" a "}})").error(),
              refusal(500, u" a "_s));
    EXPECT_EQ(keyFromResponse(300, R"({"key":"sk-or-1"})").error(), refusal(300));
    EXPECT_EQ(keyFromResponse(199, "").error(), refusal(199));
}

class RefusalWithoutWordsTest : public testing::TestWithParam<QByteArray>
{};

TEST_P(RefusalWithoutWordsTest, IsToldByItsStatus)
{
    EXPECT_EQ(keyFromResponse(403, GetParam()).error(), refusal(403));
}

INSTANTIATE_TEST_SUITE_P(OpenRouterOAuth, RefusalWithoutWordsTest,
                         testing::Values("", "<html>", "{}", "[]", R"({"error":null})",
                                         R"({"error":"Forbidden"})", R"({"error":{}})",
                                         R"({"error":{"message":null}})",
                                         R"({"error":{"message":7}})",
                                         R"({"message":"Forbidden"})"));

TEST(OpenRouterSignInError, HasASentenceForEveryCase)
{
    const auto sentence = [](Case kind, const std::optional<QString> &message = {}) {
        return OpenRouterSignInError{kind, message, 403}.description();
    };

    EXPECT_EQ(sentence(Case::couldNotStartListener, u"no %1"_s),
              u"Couldn't start sign-in (no %1). Try again, or paste an API key instead."_s);
    EXPECT_EQ(sentence(Case::denied, u"access denied"_s),
              u"OpenRouter didn't finish sign-in (access denied). Try again."_s);
    EXPECT_EQ(sentence(Case::exchangeFailed, u"Forbidden"_s),
              u"OpenRouter couldn't create a key (Forbidden). Try again."_s);
    EXPECT_EQ(sentence(Case::exchangeFailed),
              u"OpenRouter couldn't create a key (status 403). Try again."_s);
    EXPECT_EQ(sentence(Case::network, u"offline"_s),
              u"Couldn't reach OpenRouter (offline). Check your connection and try again."_s);
    EXPECT_EQ(sentence(Case::couldNotOpenBrowser),
              u"Couldn't open your browser. Try again, or paste an API key instead."_s);
    EXPECT_EQ(sentence(Case::timedOut), u"Sign-in timed out. Try again when you're ready."_s);
    EXPECT_EQ(sentence(Case::invalidExchangeResponse),
              u"OpenRouter sent an unexpected response. Try again."_s);
}

TEST(OpenRouterSignInError, EqualsOneOfTheSameCaseAndPayload)
{
    EXPECT_EQ(refusal(403, u"a"_s), refusal(403, u"a"_s));
    EXPECT_NE(refusal(403, u"a"_s), refusal(402, u"a"_s));
    EXPECT_NE(refusal(403, u"a"_s), refusal(403));
    EXPECT_NE((OpenRouterSignInError{Case::denied, u"a"_s, 0}),
              (OpenRouterSignInError{Case::network, u"a"_s, 0}));
}

} // namespace
} // namespace vantrel
