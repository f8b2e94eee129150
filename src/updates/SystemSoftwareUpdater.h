#pragma once

#include "updates/FeedSoftwareUpdater.h"

#include <memory>

namespace vantrel {

/// The updater of this system, for a configuration that is valid. On macOS the framework reads the
/// configuration itself, and does all that the services are for.
[[nodiscard]] std::unique_ptr<SoftwareUpdating>
makeSystemSoftwareUpdater(FeedSoftwareUpdater::Services services);

} // namespace vantrel
