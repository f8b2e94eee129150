#pragma once

namespace vantrel {

/// A node of an intrusive first-in-first-out ring. It leaves its ring when it is destroyed, which
/// is what lets a cancelled coroutine vanish from every queue it stands in. Not thread-safe.
class RingLink
{
public:
    RingLink() = default;
    RingLink(const RingLink &) = delete;
    RingLink &operator=(const RingLink &) = delete;
    ~RingLink() { unlink(); }

    [[nodiscard]] bool isLinked() const { return m_next != this; }

    /// The first node of the ring that this node heads, or null.
    [[nodiscard]] RingLink *front() { return isLinked() ? m_next : nullptr; }

    void unlink()
    {
        m_previous->m_next = m_next;
        m_next->m_previous = m_previous;
        m_previous = this;
        m_next = this;
    }

    /// Moves `node` to the end of the ring that this node heads.
    void pushBack(RingLink &node)
    {
        node.unlink();
        node.m_previous = m_previous;
        node.m_next = this;
        m_previous->m_next = &node;
        m_previous = &node;
    }

    /// Moves `node` to the front of the ring that this node heads.
    void pushFront(RingLink &node)
    {
        node.unlink();
        node.m_next = m_next;
        node.m_previous = this;
        m_next->m_previous = &node;
        m_next = &node;
    }

private:
    RingLink *m_previous = this;
    RingLink *m_next = this;
};

} // namespace vantrel
