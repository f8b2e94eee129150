#pragma once

#include <QString>

#include <array>
#include <optional>

namespace vantrel {

/// The colour scheme that the person chose; `system` follows the desktop.
enum class AppAppearance { system, light, dark };

inline constexpr std::array allAppAppearances{AppAppearance::system, AppAppearance::light,
                                              AppAppearance::dark};

/// The stored form: "system", "light" or "dark".
[[nodiscard]] QString rawValue(AppAppearance appearance);
[[nodiscard]] std::optional<AppAppearance> appAppearanceFromRawValue(QStringView rawValue);

} // namespace vantrel
