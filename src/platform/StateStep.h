#pragma once

#include <QVarLengthArray>

#include <algorithm>
#include <utility>

namespace vantrel {

/// One step of an object's observable state: several fields are set, then each signal whose field
/// really changed is sent once. Whoever hears the first signal sees the whole step.
/// Thread: the object's.
template<typename Object>
class StateStep
{
public:
    using Signal = void (Object::*)();

    /// `object` must outlive the step.
    explicit StateStep(Object &object)
        : m_object(object)
    {}
    StateStep(const StateStep &) = delete;
    StateStep &operator=(const StateStep &) = delete;

    template<typename Field>
    void set(Field &field, Field value, Signal signal)
    {
        if (!(field == value)) {
            field = std::move(value);
            announce(signal);
        }
    }

    /// Sends `signal` with the others, for what is derived from fields.
    void announce(Signal signal)
    {
        if (std::find(m_signals.cbegin(), m_signals.cend(), signal) == m_signals.cend()) {
            m_signals.append(signal);
        }
    }

    void publish()
    {
        for (const Signal signal : std::exchange(m_signals, {})) {
            (m_object.*signal)();
        }
    }

private:
    Object &m_object;
    QVarLengthArray<Signal, 8> m_signals{};
};

} // namespace vantrel
