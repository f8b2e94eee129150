#pragma once

#include <chrono>

namespace vantrel {

/// How long the machine has been up, the time included that it was asleep. Thread: any.
[[nodiscard]] std::chrono::milliseconds timeSinceBoot();

} // namespace vantrel
