#pragma once

#include "platform/jobs/Clock.h"

namespace vantrel {

/// The clock of the running application, over the event loop's timers.
class SystemClock final : public Clock
{
public:
    Task<> sleep(std::chrono::milliseconds duration) override;
};

} // namespace vantrel
