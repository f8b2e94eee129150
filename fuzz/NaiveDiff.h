#pragma once

#include "models/DiffParser.h"
#include "models/DiffRow.h"

#include <QByteArray>
#include <QList>

// The plainest possible forms of the diff operations: lists of copied lines, one rule after the
// other. What the fast ones are compared with.
namespace vantrel::fuzz {

[[nodiscard]] QList<RawHunk> naiveParseUnifiedDiff(const QByteArray &text);
[[nodiscard]] HunkStarts naiveParseHunkHeader(const QByteArray &header);
[[nodiscard]] RawHunk naiveUntrackedHunk(const QByteArray &text);
[[nodiscard]] QList<DiffRow> naiveAlignRows(const RawHunk &hunk);
[[nodiscard]] QString naiveFileDiffText(const QList<RawHunk> &hunks);

} // namespace vantrel::fuzz
