#pragma once

#include <QList>

#include <cstdint>
#include <random>

namespace vantrel::test {

/// Choices that a seed repeats, on every machine.
class Chance
{
public:
    explicit Chance(std::uint32_t seed)
        : m_numbers(seed)
    {}

    /// At least 0, less than `end`, which must not be 0.
    [[nodiscard]] int below(qsizetype end) { return int(m_numbers() % std::uint32_t(end)); }

    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }

    /// One of the list, which must not be empty.
    template<typename Value>
    [[nodiscard]] const Value &of(const QList<Value> &values)
    {
        return values.at(below(values.size()));
    }

private:
    std::mt19937 m_numbers;
};

} // namespace vantrel::test
