#pragma once

#include "onboarding/CallbackRequest.h"
#include "onboarding/LoopbackCallbackServerError.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace vantrel {

/// How a sign-in went, as the browser brought it: the authorisation code or the provider's error.
using CallbackOutcome = Result<QString, LoopbackCallbackServerError>;

enum class CallbackPage { success, providerError, notFound, badRequest };

/// What a request is answered with, and what it says of the sign-in.
struct CallbackAnswer
{
    CallbackPage page = CallbackPage::notFound;
    std::optional<CallbackOutcome> outcome{};
};

[[nodiscard]] CallbackAnswer answerTo(const CallbackRequest &request, const QString &callbackPath);

/// The whole response with this page, as sent. Thread: any.
[[nodiscard]] const QByteArray &responseBytes(CallbackPage page);

} // namespace vantrel
