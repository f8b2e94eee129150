#pragma once

#include "models/CodingError.h"
#include "models/HunkExplanation.h"

#include <QJsonObject>
#include <QJsonValue>

#include <tl/expected.hpp>

namespace vantrel {

/// The stored form of an explanation. What a model replies is read elsewhere, and less strictly.
[[nodiscard]] QJsonObject toJson(const HunkExplanation &explanation);

/// Fails when one of the four keys is missing or a value has the wrong type.
[[nodiscard]] tl::expected<HunkExplanation, CodingError>
hunkExplanationFromJson(const QJsonValue &value);

} // namespace vantrel
