#include "onboarding/OpenRouterSignIn.h"

#include "onboarding/LoopbackCallbackServer.h"
#include "platform/jobs/Clock.h"
#include "platform/jobs/FirstOf.h"

#include <utility>
#include <variant>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using Case = OpenRouterSignInError::Case;

constexpr qsizetype maxAnswerBytes = 1 << 20;

auto failed(Case kind)
{
    OpenRouterSignInError error;
    error.kind = kind;
    return failure(std::move(error));
}

auto failed(Case kind, const QString &message)
{
    OpenRouterSignInError error;
    error.kind = kind;
    error.message = message;
    return failure(std::move(error));
}

/// Nobody but the sign-in could stop its listener, so that no error is that of a stopped one.
auto failed(const LoopbackCallbackServerError &error)
{
    const bool isDenial = error.kind == LoopbackCallbackServerError::Case::providerError;
    return failed(isDenial ? Case::denied : Case::couldNotStartListener, error.message);
}

Task<std::monostate> timeUp(Clock *clock, std::chrono::milliseconds timeout)
{
    co_await clock->sleep(timeout);
    co_return std::monostate();
}

} // namespace

OpenRouterSignIn::OpenRouterSignIn(HttpLoading &session, Clock &clock, OpenURL openURL)
    : OpenRouterSignIn(session, clock, std::move(openURL), Settings())
{}

OpenRouterSignIn::OpenRouterSignIn(HttpLoading &session, Clock &clock, OpenURL openURL,
                                   Settings settings)
    : m_session(session)
    , m_clock(clock)
    , m_openURL(std::move(openURL))
    , m_settings(std::move(settings))
{}

Task<Result<QString, OpenRouterSignInError>> OpenRouterSignIn::obtainAPIKey()
{
    const PKCE pkce = m_settings.makePKCE();
    // Stopped with this frame, whichever way it ends.
    LoopbackCallbackServer listener(u"/callback"_s);
    const auto callbackURL = listener.start();
    if (!callbackURL) {
        co_return failed(callbackURL.error());
    }
    const QUrl page =
        OpenRouterOAuth::authorizationURL(m_settings.addresses.site, *callbackURL, pkce.challenge);
    if (!m_openURL(page)) {
        co_return failed(Case::couldNotOpenBrowser);
    }
    auto race = firstOf(listener.waitForCode(), timeUp(&m_clock, m_settings.timeout));
    const auto first = co_await race;
    const auto *const code = std::get_if<0>(&first);
    if (code == nullptr) {
        co_return failed(Case::timedOut);
    }
    if (!*code) {
        co_return failed(code->error());
    }
    auto exchanging = exchange(**code, pkce.verifier);
    co_return co_await std::move(exchanging);
}

Task<Result<QString, OpenRouterSignInError>> OpenRouterSignIn::exchange(QString code,
                                                                        QString verifier)
{
    HttpRequest request =
        OpenRouterOAuth::keyExchangeRequest(m_settings.addresses.api, code, verifier);
    auto response = co_await m_session.load(std::move(request));
    if (!response) {
        co_return failed(Case::network, response.error().description());
    }
    QByteArray body;
    // More than this is no answer; what has come of it will not decode.
    while (body.size() <= maxAnswerBytes) {
        const auto part = co_await response->body.next();
        if (!part) {
            break;
        }
        if (!*part) {
            co_return failed(Case::network, part->error().description());
        }
        body.append(**part);
    }
    co_return OpenRouterOAuth::keyFromResponse(response->status, body);
}

} // namespace vantrel
