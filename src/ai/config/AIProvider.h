#pragma once

#include <QString>

#include <array>
#include <optional>

namespace vantrel {

/// Who answers the requests. A model server on this machine is a `custom` provider.
enum class AIProvider { openRouter, openAI, custom };

/// All providers in the order in which lists show them.
inline constexpr std::array allAIProviders{AIProvider::openRouter, AIProvider::openAI,
                                           AIProvider::custom};

/// The stored form: "openRouter", "openAI" or "custom".
[[nodiscard]] QString rawValue(AIProvider provider);
[[nodiscard]] std::optional<AIProvider> aiProviderFromRawValue(QStringView rawValue);

[[nodiscard]] QString displayName(AIProvider provider);

/// Empty for `custom`.
[[nodiscard]] QString defaultBaseURL(AIProvider provider);
[[nodiscard]] bool requiresAPIKey(AIProvider provider);

} // namespace vantrel
