#pragma once

#include "onboarding/CallbackAnswer.h"
#include "onboarding/LoopbackSockets.h"
#include "platform/PlatformError.h"
#include "platform/Result.h"

#include <QString>

#include <functional>
#include <memory>
#include <thread>

namespace vantrel {

/// Answers whoever connects to two listening sockets, on a thread of its own, until it is
/// destroyed. No connection waits for another, however slow its peer is or however much it sends.
class LoopbackListener final
{
public:
    /// Called for each outcome, on the listener's thread, after the browser has its page.
    using Deliver = std::function<void(CallbackOutcome)>;

    [[nodiscard]] static Result<std::unique_ptr<LoopbackListener>, PlatformError>
    start(LoopbackSockets sockets, const QString &callbackPath, Deliver deliver);

    LoopbackListener(const LoopbackListener &) = delete;
    LoopbackListener &operator=(const LoopbackListener &) = delete;

    /// Closes the sockets and every connection before it returns; nothing is delivered afterwards.
    ~LoopbackListener();

private:
    explicit LoopbackListener(Descriptor wake);

    Descriptor m_wake; ///< Closing it ends the thread.
    std::thread m_thread{};
};

} // namespace vantrel
