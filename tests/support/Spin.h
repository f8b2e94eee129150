#pragma once

#include <functional>

namespace vantrel::test {

/// Runs the event loop until `isDone`, which is asked after every event of this thread. Fails the
/// test when that takes longer than `limitSeconds`, which is only ever the sign of a defect.
void spinUntil(const std::function<bool()> &isDone, int limitSeconds = 60);

} // namespace vantrel::test
