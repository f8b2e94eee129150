#include "platform/jobs/SystemClock.h"

#include "platform/jobs/WaiterList.h"

#include <QTimer>

namespace vantrel {

Task<> SystemClock::sleep(std::chrono::milliseconds duration)
{
    WaiterList elapsed;
    bool isOver = false;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&elapsed, &isOver] {
        isOver = true;
        elapsed.wakeAll();
    });
    timer.start(duration);
    while (!isOver) {
        co_await elapsed.wait();
    }
}

} // namespace vantrel
