#include "updates/SystemSoftwareUpdater.h"

#include <utility>

namespace vantrel {

std::unique_ptr<SoftwareUpdating> makeSystemSoftwareUpdater(FeedSoftwareUpdater::Services services)
{
    return std::make_unique<FeedSoftwareUpdater>(std::move(services));
}

} // namespace vantrel
