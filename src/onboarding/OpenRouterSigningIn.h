#pragma once

#include "onboarding/OpenRouterSignInError.h"
#include "platform/Result.h"
#include "platform/jobs/Task.h"

#include <QString>

namespace vantrel {

/// Signs in with OpenRouter in the browser. Thread: interface.
class OpenRouterSigningIn
{
public:
    OpenRouterSigningIn() = default;
    OpenRouterSigningIn(const OpenRouterSigningIn &) = delete;
    OpenRouterSigningIn &operator=(const OpenRouterSigningIn &) = delete;
    virtual ~OpenRouterSigningIn() = default;

    /// A new API key, trimmed and never empty. Calls are independent of each other. Destroying the
    /// task ends the sign-in and leaves nothing behind.
    virtual Task<Result<QString, OpenRouterSignInError>> obtainAPIKey() = 0;
};

} // namespace vantrel
