#pragma once

#include "models/FileChange.h"

#include <QString>

namespace vantrel::bench {

/// A modified file in which so many lines, each with this text, were replaced, `linesOfHunk` in
/// each hunk.
[[nodiscard]] FileChange largeFile(int lines, int linesOfHunk, const QString &text);

/// A line of code as long as most.
[[nodiscard]] QString ordinaryLine();

} // namespace vantrel::bench
