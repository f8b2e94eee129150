#pragma once

#include "onboarding/CallbackAnswer.h"
#include "onboarding/LoopbackSockets.h"
#include "platform/jobs/Task.h"

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

namespace vantrel {

class LoopbackListener;

/// The target of one browser sign-in's redirect: listens on the loopback interface, answers every
/// request with a small page, and hands the first code, or the provider's first error, to the one
/// caller who waits for it. It goes on answering until it is stopped, which is final; destroying it
/// stops it. Thread: interface; the network has a thread of its own.
class LoopbackCallbackServer final
{
public:
    using OpenSockets = std::function<Result<LoopbackSockets, PlatformError>()>;

    /// `callbackPath` begins with a slash. Nothing listens yet.
    explicit LoopbackCallbackServer(
        QString callbackPath, OpenSockets openSockets = [] { return openLoopbackSockets(); });
    LoopbackCallbackServer(const LoopbackCallbackServer &) = delete;
    LoopbackCallbackServer &operator=(const LoopbackCallbackServer &) = delete;
    ~LoopbackCallbackServer();

    /// Listens, and gives the address for the provider to send the browser to. Takes no time worth
    /// waiting for. Once only.
    [[nodiscard]] Result<QUrl, LoopbackCallbackServerError> start();

    /// The code, at once when it has come already. One caller at a time; who leaves makes room for
    /// another. The task may outlive the server.
    Task<CallbackOutcome> waitForCode();

    /// Closes everything before it returns, and cancels the wait. May be called at any time, and
    /// again.
    void stop();

private:
    struct State;

    QString m_callbackPath;
    OpenSockets m_openSockets;
    std::shared_ptr<State> m_state;
    std::unique_ptr<LoopbackListener> m_listener;
};

} // namespace vantrel
