#pragma once

#include "onboarding/OpenRouterOAuth.h"
#include "onboarding/OpenRouterSigningIn.h"
#include "onboarding/PKCE.h"

#include <QUrl>

#include <chrono>
#include <functional>

namespace vantrel {

class Clock;
class HttpLoading;

/// Opens OpenRouter's page in the browser, waits for the browser to come back to a listener of this
/// machine with a code, and exchanges the code for a key. Thread: interface.
class OpenRouterSignIn final : public OpenRouterSigningIn
{
public:
    static constexpr std::chrono::milliseconds usualTimeout = std::chrono::minutes(10);

    /// Opens a page in the person's browser and tells whether it did.
    using OpenURL = std::function<bool(const QUrl &url)>;

    struct Settings
    {
        std::chrono::milliseconds timeout = usualTimeout; ///< How long the browser may take.
        std::function<PKCE()> makePKCE = generatePKCE;
        OpenRouterOAuth::Addresses addresses{};
    };

    /// `session` and `clock`, which measures the time-out, must outlive the sign-in.
    OpenRouterSignIn(HttpLoading &session, Clock &clock, OpenURL openURL);
    OpenRouterSignIn(HttpLoading &session, Clock &clock, OpenURL openURL, Settings settings);

    Task<Result<QString, OpenRouterSignInError>> obtainAPIKey() override;

private:
    [[nodiscard]] Task<Result<QString, OpenRouterSignInError>> exchange(QString code,
                                                                        QString verifier);

    HttpLoading &m_session;
    Clock &m_clock;
    OpenURL m_openURL;
    Settings m_settings;
};

} // namespace vantrel
