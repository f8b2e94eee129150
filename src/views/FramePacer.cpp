#include "views/FramePacer.h"

#include <chrono>
#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr auto frameLength = 16ms;

} // namespace

FramePacer::FramePacer(std::function<void()> announce)
    : m_announce(std::move(announce))
{
    m_frame.setSingleShot(true);
    m_frame.setTimerType(Qt::PreciseTimer);
    m_frame.setInterval(frameLength);
    m_frame.callOnTimeout([this] { endFrame(); });
}

void FramePacer::changed()
{
    if (m_frame.isActive()) {
        m_isDue = true;
        return;
    }
    m_frame.start();
    m_announce();
}

void FramePacer::endFrame()
{
    if (std::exchange(m_isDue, false)) {
        changed();
    }
}

} // namespace vantrel
