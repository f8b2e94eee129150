#include "support/FakeSignIn.h"

#include <utility>

namespace vantrel::test {

/// A sign-in under way.
class FakeSignIn::Attempt
{
public:
    explicit Attempt(FakeSignIn &signIn)
        : m_signIn(signIn)
    {
        ++m_signIn.m_begunCount;
        ++m_signIn.m_runningCount;
    }
    Attempt(const Attempt &) = delete;
    Attempt &operator=(const Attempt &) = delete;
    ~Attempt() { --m_signIn.m_runningCount; }

private:
    FakeSignIn &m_signIn;
};

void FakeSignIn::finish(Outcome outcome)
{
    m_outcome = std::move(outcome);
    m_waiters.wakeAll();
}

Task<FakeSignIn::Outcome> FakeSignIn::obtainAPIKey()
{
    const Attempt attempt(*this);
    while (!m_outcome) {
        co_await m_waiters.wait();
    }
    co_return *std::exchange(m_outcome, std::nullopt);
}

} // namespace vantrel::test
