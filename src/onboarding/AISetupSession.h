#pragma once

namespace vantrel {

/// What the setup remembers for one run of the application.
struct AISetupSession
{
    bool hasPresentedAutomatically = false; ///< The sheet has opened by itself once.
};

} // namespace vantrel
