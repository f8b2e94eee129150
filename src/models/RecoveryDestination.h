#pragma once

namespace vantrel {

/// Where the link beneath a failure leads.
enum class RecoveryDestination { settings };

} // namespace vantrel
