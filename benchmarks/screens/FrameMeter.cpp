#include "screens/FrameMeter.h"

#include <QQuickWindow>
#include <QThread>

#include <ctime>

namespace vantrel::bench {

namespace {

double processorMilliseconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

} // namespace

std::chrono::steady_clock::duration MeteredApplication::busyTime() const
{
    return m_depth > 0 ? m_busy + (Clock::now() - m_began) : m_busy;
}

bool MeteredApplication::notify(QObject *receiver, QEvent *event)
{
    // Workers have loops of their own.
    if (QThread::currentThread() != thread()) {
        return QGuiApplication::notify(receiver, event);
    }
    if (m_depth++ == 0) {
        m_began = Clock::now();
    }
    const bool isHandled = QGuiApplication::notify(receiver, event);
    if (--m_depth == 0) {
        m_busy += Clock::now() - m_began;
    }
    return isHandled;
}

FrameMeter::FrameMeter(const MeteredApplication &application, QQuickWindow &window)
    : m_application(application)
{
    connect(&window, &QQuickWindow::frameSwapped, this, &FrameMeter::endFrame);
    beginFrame();
}

void FrameMeter::restart()
{
    m_frames.clear();
    beginFrame();
}

void FrameMeter::beginFrame()
{
    m_busyBefore = m_application.busyTime();
    m_processorBefore = processorMilliseconds();
}

void FrameMeter::endFrame()
{
    using Milliseconds = std::chrono::duration<double, std::milli>;
    FrameCost cost;
    cost.processor = processorMilliseconds() - m_processorBefore;
    cost.busy = Milliseconds(m_application.busyTime() - m_busyBefore).count();
    m_frames.append(cost);
    beginFrame();
}

} // namespace vantrel::bench
