#pragma once

#include "platform/jobs/Stream.h"

#include <QString>

#include <functional>
#include <memory>
#include <variant>

namespace vantrel {

/// Announcements by name, to whoever observes the name. Thread: any, unless said otherwise.
class NotificationCenter
{
    struct Registration;

public:
    /// A registration; destroying it ends it. A call that runs on another thread at that moment is
    /// waited for.
    class [[nodiscard]] Token
    {
    public:
        Token() = default;
        Token(Token &&) noexcept = default;
        Token &operator=(Token &&other) noexcept;
        Token(const Token &) = delete;
        Token &operator=(const Token &) = delete;
        ~Token();

    private:
        friend NotificationCenter;
        explicit Token(std::shared_ptr<Registration> registration);

        std::shared_ptr<Registration> m_registration;
    };

    /// A notification carries nothing but its name, and a stream of them never fails.
    using Stream = vantrel::Stream<std::monostate, std::monostate>;

    NotificationCenter();
    NotificationCenter(const NotificationCenter &) = delete;
    NotificationCenter &operator=(const NotificationCenter &) = delete;
    ~NotificationCenter();

    /// Calls every observer of `name`, in order of registration, on the calling thread.
    void post(const QString &name);

    /// Calls `call` for each later post of `name`, on the posting thread.
    Token observe(const QString &name, std::function<void()> call);

    /// Every post of `name` from now on, as a stream read on the interface thread.
    Stream notifications(const QString &name);

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace vantrel
