#pragma once

#include "models/Hunk.h"
#include "models/RawHunk.h"

#include <QList>

namespace vantrel {

/// The hunks of a file as the diff screen shows them, in order and not explained yet. Thread: any.
[[nodiscard]] QList<Hunk> displayedHunks(const QList<RawHunk> &rawHunks);

} // namespace vantrel
