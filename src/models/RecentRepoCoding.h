#pragma once

#include "models/CodingError.h"
#include "models/RecentRepo.h"

#include <QJsonObject>
#include <QJsonValue>

#include <tl/expected.hpp>

namespace vantrel {

/// The stored form of an entry. Its date is a number: seconds since 2001-01-01 00:00:00 UTC, which
/// keeps milliseconds.
[[nodiscard]] QJsonObject toJson(const RecentRepo &repo);

/// Fails when one of the four keys is missing or a value is not of its form. The date is in UTC.
[[nodiscard]] tl::expected<RecentRepo, CodingError> recentRepoFromJson(const QJsonValue &value);

} // namespace vantrel
