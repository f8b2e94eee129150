#pragma once

#include <QStringList>

namespace vantrel {

/// What every invocation of git begins with: no file-system monitor of the repository's, no pager,
/// and no lock that could disturb a git that the person runs at the same time.
[[nodiscard]] QStringList gitPrefix();

} // namespace vantrel
