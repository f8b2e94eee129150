#pragma once

#include "platform/Result.h"
#include "platform/jobs/Task.h"
#include "updates/Appcast.h"
#include "updates/SoftwareUpdateError.h"
#include "updates/UpdateVersion.h"
#include "updates/UpdaterConfiguration.h"

#include <optional>

namespace vantrel {

class HttpLoading;

/// Asks the feed for the newest version: nothing when the running one is the newest. What is not
/// signed with the configured key is not even parsed. `session` must outlive the task. Thread:
/// interface.
[[nodiscard]] Task<Result<std::optional<AppcastItem>, SoftwareUpdateError>>
newestUpdate(HttpLoading *session, UpdaterConfiguration configuration, UpdateVersion running);

} // namespace vantrel
