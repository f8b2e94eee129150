#pragma once

#include <mutex>
#include <set>

namespace vantrel::test {

class Tracked;

/// Counts the tracked objects that live, and notices one that is destroyed twice. Thread: any.
class Lifetimes
{
public:
    [[nodiscard]] int alive() const
    {
        const std::lock_guard lock(m_mutex);
        return int(m_alive.size());
    }

    /// Destructions of what did not live, and constructions over what did. A defect when not zero.
    [[nodiscard]] int errors() const
    {
        const std::lock_guard lock(m_mutex);
        return m_errors;
    }

private:
    friend Tracked;

    void add(const Tracked *object)
    {
        const std::lock_guard lock(m_mutex);
        m_errors += m_alive.insert(object).second ? 0 : 1;
    }
    void remove(const Tracked *object)
    {
        const std::lock_guard lock(m_mutex);
        m_errors += m_alive.erase(object) == 1 ? 0 : 1;
    }

    mutable std::mutex m_mutex{};
    std::set<const Tracked *> m_alive{}; ///< Guarded by `m_mutex`.
    int m_errors = 0;                    ///< Guarded by `m_mutex`.
};

/// A value whose life is recorded.
class Tracked
{
public:
    explicit Tracked(Lifetimes &lifetimes)
        : m_lifetimes(&lifetimes)
    {
        m_lifetimes->add(this);
    }
    Tracked(const Tracked &other)
        : Tracked(*other.m_lifetimes)
    {}
    Tracked(Tracked &&other) noexcept
        : Tracked(*other.m_lifetimes)
    {}
    Tracked &operator=(const Tracked &) = default;
    Tracked &operator=(Tracked &&) noexcept = default;
    ~Tracked() { m_lifetimes->remove(this); }

    /// For what is made where a tracked value came from.
    [[nodiscard]] Lifetimes &lifetimes() const { return *m_lifetimes; }

private:
    Lifetimes *m_lifetimes = nullptr;
};

} // namespace vantrel::test
