#pragma once

#include <QString>

#include <array>

namespace vantrel {

/// A model server that a person may run on this machine.
enum class LocalModelServer { ollama, lmStudio };

/// All of them in the order in which lists show them.
inline constexpr std::array allLocalModelServers{LocalModelServer::ollama,
                                                 LocalModelServer::lmStudio};

/// "ollama" or "lmStudio".
[[nodiscard]] QString rawValue(LocalModelServer server);

[[nodiscard]] QString displayName(LocalModelServer server);

/// Where its API listens unless it is told otherwise.
[[nodiscard]] QString baseURL(LocalModelServer server);

} // namespace vantrel
