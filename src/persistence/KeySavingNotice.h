#pragma once

namespace vantrel {

class UserDefaults;

/// Whether the person has read where keys are kept, which they are told before the first key that
/// they save. The settings and the setup share it. Thread: any.
[[nodiscard]] bool hasShownKeySavingNotice(const UserDefaults &defaults);

/// Records that they have.
void recordShownKeySavingNotice(UserDefaults &defaults);

} // namespace vantrel
