#pragma once

#include "models/HunkExplanation.h"

#include <QString>

#include <optional>

namespace vantrel {

/// The explanation that a whole reply amounts to. `metadataText` is what came behind the delimiter;
/// nothing when the delimiter never came, in which case the prose may be a JSON object of the older
/// form. What cannot be read falls back to the prose, tagged "Change".
[[nodiscard]] HunkExplanation explanationFromReply(const QString &prose,
                                                   const std::optional<QString> &metadataText);

} // namespace vantrel
