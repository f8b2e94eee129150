#pragma once

#include "models/DiffRow.h"
#include "models/RawHunk.h"

#include <QList>

#include <cstdint>

namespace vantrel {

/// Lays a hunk's lines out side by side. Inside a changed block the first deletion stands beside
/// the first addition, the second beside the second, and fillers pad the shorter side. One pass;
/// thread: any.
[[nodiscard]] QList<DiffRow> alignRows(std::int64_t oldStart, std::int64_t newStart,
                                       const QList<RawDiffLine> &lines);

} // namespace vantrel
