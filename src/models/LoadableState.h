#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace vantrel {

/// The state of one asynchronous result on screen: not asked for, asked for, there, or failed with
/// a user-facing sentence.
template<typename Value>
class LoadableState
{
public:
    LoadableState() = default;

    static LoadableState idle() { return {}; }
    static LoadableState loading() { return LoadableState(Loading()); }
    static LoadableState loaded(Value value) { return LoadableState(Loaded(std::move(value))); }
    static LoadableState failed(QString message)
    {
        return LoadableState(Failed(std::move(message)));
    }

    [[nodiscard]] bool isIdle() const { return std::holds_alternative<Idle>(m_state); }
    [[nodiscard]] bool isLoading() const { return std::holds_alternative<Loading>(m_state); }
    [[nodiscard]] bool isLoaded() const { return value() != nullptr; }
    [[nodiscard]] bool isFailed() const { return message() != nullptr; }

    /// The value when loaded, else null.
    [[nodiscard]] const Value *value() const
    {
        const auto *const loaded = std::get_if<Loaded>(&m_state);
        return loaded == nullptr ? nullptr : &loaded->value;
    }

    /// The user-facing message when failed, else null.
    [[nodiscard]] const QString *message() const
    {
        const auto *const failed = std::get_if<Failed>(&m_state);
        return failed == nullptr ? nullptr : &failed->message;
    }

    bool operator==(const LoadableState &) const = default;

private:
    struct Idle
    {
        bool operator==(const Idle &) const = default;
    };
    struct Loading
    {
        bool operator==(const Loading &) const = default;
    };
    struct Loaded
    {
        explicit Loaded(Value loadedValue)
            : value(std::move(loadedValue))
        {}
        bool operator==(const Loaded &) const = default;

        Value value;
    };
    struct Failed
    {
        explicit Failed(QString failedMessage)
            : message(std::move(failedMessage))
        {}
        bool operator==(const Failed &) const = default;

        QString message;
    };
    using State = std::variant<Idle, Loading, Loaded, Failed>;

    explicit LoadableState(State state)
        : m_state(std::move(state))
    {}

    State m_state{};
};

} // namespace vantrel
