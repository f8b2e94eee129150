#include "screens/FrameMeter.h"

#include <QAbstractEventDispatcher>
#include <QQuickWindow>

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

FrameMeter::FrameMeter(QQuickWindow &window)
{
    connect(&window, &QQuickWindow::frameSwapped, this, &FrameMeter::endFrame);
    const QAbstractEventDispatcher *const dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { m_blocked = Clock::now(); });
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] {
        if (m_blocked != Clock::time_point()) {
            m_waited += Clock::now() - m_blocked;
            m_blocked = {};
        }
    });
    beginFrame();
}

void FrameMeter::restart()
{
    m_frames.clear();
    beginFrame();
}

void FrameMeter::beginFrame()
{
    m_waited = {};
    m_began = Clock::now();
    m_processorBefore = processorMilliseconds();
}

void FrameMeter::endFrame()
{
    using Milliseconds = std::chrono::duration<double, std::milli>;
    FrameCost cost;
    cost.processor = processorMilliseconds() - m_processorBefore;
    cost.busy = Milliseconds(Clock::now() - m_began - m_waited).count();
    m_frames.append(cost);
    beginFrame();
}

} // namespace vantrel::bench
