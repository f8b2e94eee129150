// On Apple systems, where the system itself starts an application only once.

#include "platform/instance/ApplicationInstance.h"

namespace vantrel {

namespace {

class LaunchedInstance final : public ApplicationInstance
{
public:
    [[nodiscard]] Start start(const StartRequest &) override { return Start::first; }
};

} // namespace

std::unique_ptr<ApplicationInstance> systemInstance()
{
    return std::make_unique<LaunchedInstance>();
}

} // namespace vantrel
