#include "updates/SystemSoftwareUpdater.h"

#include "updates/macos/SparkleSoftwareUpdater.h"

namespace vantrel {

std::unique_ptr<SoftwareUpdating> makeSystemSoftwareUpdater(FeedSoftwareUpdater::Services)
{
    return std::make_unique<SparkleSoftwareUpdater>();
}

} // namespace vantrel
