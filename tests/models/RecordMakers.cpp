#include "RecordMakers.h"

#include <ostream>
#include <string_view>

namespace vantrel {

namespace {

void print(const DiffLine &cell, std::ostream &stream)
{
    stream << " <" << int(cell.kind) << ' ';
    if (cell.number) {
        stream << *cell.number << ' ';
    }
    PrintTo(cell.text, &stream);
    stream << '>';
}

} // namespace

void PrintTo(const TextSlice &text, std::ostream *stream)
{
    *stream << '"' << std::string_view(text.utf8().data(), size_t(text.size())) << '"';
}

void PrintTo(const RawDiffLine &line, std::ostream *stream)
{
    *stream << int(line.kind) << ' ';
    PrintTo(line.text, stream);
}

void PrintTo(const RawHunk &hunk, std::ostream *stream)
{
    PrintTo(hunk.header, stream);
    *stream << ' ' << hunk.oldStart << ' ' << hunk.newStart;
    for (const RawDiffLine &line : hunk.lines) {
        *stream << ", ";
        PrintTo(line, stream);
    }
}

void PrintTo(const DiffRow &row, std::ostream *stream)
{
    *stream << row.id;
    print(row.left, *stream);
    print(row.right, *stream);
}

} // namespace vantrel

namespace vantrel::test {

TextSlice slice(const QByteArray &utf8)
{
    return TextSlice::fromUtf8(utf8);
}

RawDiffLine context(const QByteArray &text)
{
    return RawDiffLine{RawLineKind::context, slice(text)};
}

RawDiffLine deletion(const QByteArray &text)
{
    return RawDiffLine{RawLineKind::deletion, slice(text)};
}

RawDiffLine addition(const QByteArray &text)
{
    return RawDiffLine{RawLineKind::addition, slice(text)};
}

DiffLine contextCell(std::int64_t number, const QByteArray &text)
{
    return DiffLine{number, slice(text), DiffLineKind::context};
}

DiffLine deletionCell(std::int64_t number, const QByteArray &text)
{
    return DiffLine{number, slice(text), DiffLineKind::deletion};
}

DiffLine additionCell(std::int64_t number, const QByteArray &text)
{
    return DiffLine{number, slice(text), DiffLineKind::addition};
}

DiffLine fillerCell()
{
    return DiffLine{std::nullopt, TextSlice(), DiffLineKind::filler};
}

} // namespace vantrel::test
