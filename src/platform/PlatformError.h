#pragma once

#include <QString>

namespace vantrel {

/// A failure that the platform reports in words of its own: a child process that cannot be
/// launched, a connection that is refused, a file that cannot be read.
struct PlatformError
{
    QString message{}; ///< The platform's sentence, shown to people as it is.

    [[nodiscard]] QString description() const { return message; }

    bool operator==(const PlatformError &) const = default;
};

} // namespace vantrel
