#pragma once

#include "onboarding/OpenRouterSignInError.h"
#include "platform/Result.h"
#include "platform/http/HttpLoading.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

/// The requests and answers of OpenRouter's sign-in.
namespace vantrel::OpenRouterOAuth {

/// Where OpenRouter's pages and its API lie.
struct Addresses
{
    QUrl site{QStringLiteral("https://openrouter.ai")};
    QUrl api{QStringLiteral("https://openrouter.ai")};
};

/// The page on which the person approves the application.
[[nodiscard]] QUrl authorizationURL(const QUrl &site, const QUrl &callbackURL,
                                    const QString &challenge);

/// Exchanges a code for a key.
[[nodiscard]] HttpRequest keyExchangeRequest(const QUrl &api, const QString &code,
                                             const QString &verifier);

/// The key in the answer to an exchange, trimmed and never empty; `status` is negative for an
/// answer that is not HTTP.
[[nodiscard]] Result<QString, OpenRouterSignInError> keyFromResponse(int status,
                                                                     const QByteArray &body);

} // namespace vantrel::OpenRouterOAuth
