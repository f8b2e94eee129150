#pragma once

#include <QList>
#include <QObject>

#include <chrono>

class QQuickWindow;

namespace vantrel::bench {

/// What the interface thread did from the end of one frame to the end of the next: everything that
/// can make the next frame late. In milliseconds.
struct FrameCost
{
    double processor = 0; ///< The thread's processor time, which other programs do not lengthen.
    double busy = 0;      ///< The time that passed while the event loop was not waiting.
};

/// Writes down the cost of each frame of a window that is drawn on the interface thread.
class FrameMeter final : public QObject
{
public:
    explicit FrameMeter(QQuickWindow &window);

    /// Forgets the frames so far; the next one is counted from now.
    void restart();

    [[nodiscard]] const QList<FrameCost> &frames() const { return m_frames; }

private:
    void beginFrame();
    void endFrame();

    using Clock = std::chrono::steady_clock;

    QList<FrameCost> m_frames{};
    double m_processorBefore = 0;
    Clock::time_point m_began{};
    Clock::time_point m_blocked{};
    Clock::duration m_waited{};
};

} // namespace vantrel::bench
