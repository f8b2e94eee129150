#pragma once

#include <unistd.h>
#include <utility>

namespace vantrel {

/// The owner of a file descriptor. Thread: one at a time.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int value)
        : m_value(value)
    {}
    Descriptor(Descriptor &&other) noexcept
        : m_value(std::exchange(other.m_value, none))
    {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_value, other.m_value);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (isOpen()) {
            ::close(m_value);
        }
    }

    [[nodiscard]] int value() const { return m_value; }
    [[nodiscard]] bool isOpen() const { return m_value != none; }

private:
    static constexpr int none = -1;

    int m_value = none;
};

} // namespace vantrel
