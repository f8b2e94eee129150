#pragma once

#include "models/CodingError.h"
#include "models/PersistedChatThread.h"

#include <QJsonObject>
#include <QJsonValue>

#include <tl/expected.hpp>

namespace vantrel {

/// The stored form of a thread. Its date is a number: seconds since 2001-01-01 00:00:00 UTC, which
/// keeps milliseconds. Without an explanation that key is left out.
[[nodiscard]] QJsonObject toJson(const PersistedChatThread &thread);

/// Fails when a key other than the explanation's is missing, or when anything in the thread is not
/// of its form. The date is in UTC.
[[nodiscard]] tl::expected<PersistedChatThread, CodingError>
persistedChatThreadFromJson(const QJsonValue &value);

} // namespace vantrel
