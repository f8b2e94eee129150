#pragma once

#include <QGuiApplication>
#include <QList>
#include <QObject>

#include <chrono>

class QQuickWindow;

namespace vantrel::bench {

/// Adds up the time that passes while events are handled, which is all but the waiting for them.
class MeteredApplication final : public QGuiApplication
{
public:
    using QGuiApplication::QGuiApplication;

    /// Up to now, also within an event.
    [[nodiscard]] std::chrono::steady_clock::duration busyTime() const;

    bool notify(QObject *receiver, QEvent *event) override;

private:
    using Clock = std::chrono::steady_clock;

    int m_depth = 0; ///< Events within events.
    Clock::time_point m_began{};
    Clock::duration m_busy{};
};

/// What the interface thread did from the end of one frame to the end of the next: everything that
/// can make the next frame late. In milliseconds.
struct FrameCost
{
    double processor = 0; ///< The thread's processor time, which other programs hardly lengthen.
    double busy = 0;      ///< The time that passed while events were handled.
};

/// Writes down the cost of each frame of a window that is drawn on the interface thread.
class FrameMeter final : public QObject
{
public:
    FrameMeter(const MeteredApplication &application, QQuickWindow &window);

    /// Forgets the frames so far; the next one is counted from now.
    void restart();

    [[nodiscard]] const QList<FrameCost> &frames() const { return m_frames; }

private:
    void beginFrame();
    void endFrame();

    const MeteredApplication &m_application;
    QList<FrameCost> m_frames{};
    double m_processorBefore = 0;
    std::chrono::steady_clock::duration m_busyBefore{};
};

} // namespace vantrel::bench
