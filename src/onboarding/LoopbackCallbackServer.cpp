#include "onboarding/LoopbackCallbackServer.h"

#include "onboarding/LoopbackListener.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/WaiterList.h"

#include <optional>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using Case = LoopbackCallbackServerError::Case;

auto listenerFailed(const QString &message)
{
    LoopbackCallbackServerError error{Case::listenerFailed, message};
    return failure(std::move(error));
}

auto cancelled()
{
    LoopbackCallbackServerError error{Case::cancelled, QString()};
    return failure(std::move(error));
}

} // namespace

/// Shared with whoever waits. Thread: interface.
struct LoopbackCallbackServer::State
{
    std::optional<CallbackOutcome> result{}; ///< The first outcome.
    bool hasStarted = false;
    bool isStopped = false;
    bool hasWaiter = false;
    WaiterList changed{};

    void deliver(CallbackOutcome outcome)
    {
        if (!isStopped && !result) {
            result = std::move(outcome);
            changed.wakeAll();
        }
    }

    /// Makes room for another waiter when the one that it was made for goes.
    class Place
    {
    public:
        explicit Place(std::shared_ptr<State> state)
            : m_state(std::move(state))
        {
            m_state->hasWaiter = true;
        }
        Place(const Place &) = delete;
        Place &operator=(const Place &) = delete;
        ~Place() { m_state->hasWaiter = false; }

    private:
        std::shared_ptr<State> m_state;
    };

    static Task<CallbackOutcome> wait(std::shared_ptr<State> state)
    {
        if (state->hasWaiter && !state->result && !state->isStopped) {
            co_return listenerFailed(u"Something is already waiting for the sign-in callback."_s);
        }
        const Place place(state);
        while (!state->result && !state->isStopped) {
            co_await state->changed.wait();
        }
        const CallbackOutcome outcome = state->result.value_or(cancelled());
        co_return outcome;
    }
};

LoopbackCallbackServer::LoopbackCallbackServer(QString callbackPath, OpenSockets openSockets)
    : m_callbackPath(std::move(callbackPath))
    , m_openSockets(std::move(openSockets))
    , m_state(std::make_shared<State>())
{}

LoopbackCallbackServer::~LoopbackCallbackServer()
{
    stop();
}

Result<QUrl, LoopbackCallbackServerError> LoopbackCallbackServer::start()
{
    VANTREL_ASSERT_UI_THREAD();
    if (m_state->isStopped) {
        return cancelled();
    }
    if (std::exchange(m_state->hasStarted, true)) {
        return listenerFailed(u"The sign-in listener was already started."_s);
    }
    auto sockets = m_openSockets();
    if (!sockets) {
        return listenerFailed(sockets.error().description());
    }
    const quint16 port = sockets->port;
    if (port == 0) {
        return listenerFailed(u"The sign-in listener has no port."_s);
    }
    auto deliver = [weak = std::weak_ptr(m_state)](CallbackOutcome outcome) {
        RunQueue::interfaceThread().postFromThread([weak, outcome = std::move(outcome)] {
            if (const auto state = weak.lock()) {
                state->deliver(outcome);
            }
        });
    };
    auto listener =
        LoopbackListener::start(std::move(*sockets), m_callbackPath, std::move(deliver));
    if (!listener) {
        return listenerFailed(listener.error().description());
    }
    m_listener = std::move(*listener);
    QUrl url;
    url.setScheme(u"http"_s);
    url.setHost(u"localhost"_s);
    url.setPort(port);
    url.setPath(m_callbackPath);
    return url;
}

Task<CallbackOutcome> LoopbackCallbackServer::waitForCode()
{
    VANTREL_ASSERT_UI_THREAD();
    return State::wait(m_state);
}

void LoopbackCallbackServer::stop()
{
    VANTREL_ASSERT_UI_THREAD();
    m_state->isStopped = true;
    m_listener.reset();
    m_state->changed.wakeAll();
}

} // namespace vantrel
