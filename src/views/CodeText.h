#pragma once

#include "models/TextSlice.h"

#include <QString>

namespace vantrel {

/// A line of code as it is drawn: tabs reach to the next multiple of four columns, and characters
/// that are invisible or that would reorder the text (controls, bidirectional marks, zero-width
/// ones) stand there as visible marks. A column is one character; nothing is measured here.

/// The number of columns that the whole line takes.
[[nodiscard]] qsizetype codeColumns(const TextSlice &line);

/// The part of the drawn line from `firstColumn`, `count` columns at most. Costs the bytes before
/// its end, never the rest of a long line.
[[nodiscard]] QString visibleCode(const TextSlice &line, qsizetype firstColumn, qsizetype count);

} // namespace vantrel
