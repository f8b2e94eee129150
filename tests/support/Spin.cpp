#include "support/Spin.h"

#include "platform/jobs/RunQueue.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

namespace vantrel::test {

void spinUntil(const std::function<bool()> &isDone, int limitSeconds)
{
    const QDeadlineTimer deadline(std::chrono::seconds{limitSeconds});
    QTimer alarm;
    alarm.start(std::chrono::seconds{limitSeconds});
    RunQueue::interfaceThread().runUntilIdle();
    while (!isDone()) {
        if (deadline.hasExpired()) {
            ADD_FAILURE() << "the awaited condition did not come";
            return;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        RunQueue::interfaceThread().runUntilIdle();
    }
}

} // namespace vantrel::test
