#pragma once

#include "onboarding/OpenRouterSigningIn.h"
#include "platform/jobs/WaiterList.h"

#include <optional>

namespace vantrel::test {

/// A sign-in that ends when the test says so. Thread: interface.
class FakeSignIn final : public OpenRouterSigningIn
{
public:
    using Outcome = Result<QString, OpenRouterSignInError>;

    /// How many sign-ins have begun, and how many are under way.
    [[nodiscard]] int begunCount() const { return m_begunCount; }
    [[nodiscard]] int runningCount() const { return m_runningCount; }

    /// Ends the sign-in that is under way.
    void finish(Outcome outcome);

    Task<Outcome> obtainAPIKey() override;

private:
    class Attempt;

    int m_begunCount = 0;
    int m_runningCount = 0;
    std::optional<Outcome> m_outcome{};
    WaiterList m_waiters{};
};

} // namespace vantrel::test
