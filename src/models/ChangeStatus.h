#pragma once

#include <QString>

#include <optional>

namespace vantrel {

/// How a file of the working tree differs from the last commit.
enum class ChangeStatus { modified, added, deleted };

/// The one-letter form, which is also the badge that lists show: "M", "A" or "D".
[[nodiscard]] QString rawValue(ChangeStatus status);

/// The status of exactly one of the three letters; nothing for any other text.
[[nodiscard]] std::optional<ChangeStatus> changeStatusFromRawValue(QStringView rawValue);

} // namespace vantrel
