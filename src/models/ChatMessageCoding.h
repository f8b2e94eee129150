#pragma once

#include "models/ChatMessage.h"
#include "models/CodingError.h"

#include <QJsonObject>
#include <QJsonValue>

#include <tl/expected.hpp>

namespace vantrel {

/// The stored form of a message. Its role is an object whose one key is the role and whose value is
/// an empty object: `{"user":{}}`.
[[nodiscard]] QJsonObject toJson(const ChatMessage &message);

/// Fails when one of the four keys is missing, when a value has the wrong type, or when the role
/// does not have exactly one key that names a role.
[[nodiscard]] tl::expected<ChatMessage, CodingError> chatMessageFromJson(const QJsonValue &value);

} // namespace vantrel
