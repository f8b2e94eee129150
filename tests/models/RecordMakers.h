#pragma once

#include "models/DiffRow.h"
#include "models/RawHunk.h"

#include <QByteArray>

#include <iosfwd>

// How failed comparisons show the records.
namespace vantrel {

void PrintTo(const TextSlice &text, std::ostream *stream);
void PrintTo(const RawDiffLine &line, std::ostream *stream);
void PrintTo(const RawHunk &hunk, std::ostream *stream);
void PrintTo(const DiffRow &row, std::ostream *stream);

} // namespace vantrel

namespace vantrel::test {

[[nodiscard]] TextSlice slice(const QByteArray &utf8);

[[nodiscard]] RawDiffLine context(const QByteArray &text);
[[nodiscard]] RawDiffLine deletion(const QByteArray &text);
[[nodiscard]] RawDiffLine addition(const QByteArray &text);

[[nodiscard]] DiffLine contextCell(std::int64_t number, const QByteArray &text);
[[nodiscard]] DiffLine deletionCell(std::int64_t number, const QByteArray &text);
[[nodiscard]] DiffLine additionCell(std::int64_t number, const QByteArray &text);
[[nodiscard]] DiffLine fillerCell();

} // namespace vantrel::test
