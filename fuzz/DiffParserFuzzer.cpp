// Any text is read as a diff and as an untracked file, and its hunks are laid out as rows. The
// results are those of the naive forms, every record is a piece of one line of the text, and no
// line is lost or doubled on the way to the rows.

#include "FuzzCheck.h"
#include "NaiveDiff.h"
#include "models/DiffParser.h"
#include "models/DiffText.h"
#include "models/FileChange.h"
#include "models/RowAligner.h"

using vantrel::DiffLine;
using vantrel::DiffLineKind;
using vantrel::DiffRow;
using vantrel::RawDiffLine;
using vantrel::RawHunk;
using vantrel::RawLineKind;
using vantrel::TextSlice;
using vantrel::fuzz::check;

namespace {

char prefixOf(RawLineKind kind)
{
    switch (kind) {
    case RawLineKind::context:
        return ' ';
    case RawLineKind::addition:
        return '+';
    case RawLineKind::deletion:
        return '-';
    }
    Q_UNREACHABLE();
}

/// Walks through the bytes of a text from front to back and sees that each record is the next line.
class LineWalk
{
public:
    explicit LineWalk(const TextSlice &text)
        : m_position(text.utf8().begin())
        , m_begin(text.utf8().begin())
        , m_end(text.utf8().end())
    {}

    /// `text` lies behind `prefix` on a line of its own, behind all lines so far.
    void expectLine(QByteArrayView prefix, const TextSlice &text)
    {
        const char *const begin = text.utf8().begin() - prefix.size();
        const char *const end = text.utf8().end();
        check(begin >= m_position && end <= m_end, "records lie in the text, in order");
        check(begin == m_begin || begin[-1] == '\n', "a record begins with its line");
        check(end == m_end || *end == '\n', "a record ends with its line");
        check(QByteArrayView(begin, prefix.size()) == prefix, "a record is of its line's kind");
        check(!text.utf8().contains('\n'), "a record is one line");
        m_position = end;
    }

private:
    const char *m_position = nullptr;
    const char *m_begin = nullptr;
    const char *m_end = nullptr;
};

void checkLines(const TextSlice &text, const QList<RawHunk> &hunks)
{
    LineWalk walk(text);
    for (const RawHunk &hunk : hunks) {
        check(hunk.header.utf8().startsWith("@@"), "a header begins with its marker");
        walk.expectLine({}, hunk.header);
        for (const RawDiffLine &line : hunk.lines) {
            const char prefix = prefixOf(line.kind);
            walk.expectLine(QByteArrayView(&prefix, 1), line.text);
        }
    }
}

/// Which lines of a hunk stand in the cells of one side, in order.
QList<TextSlice> textsOf(const QList<DiffRow> &rows, DiffLine DiffRow::*cell)
{
    QList<TextSlice> texts;
    for (const DiffRow &row : rows) {
        if ((row.*cell).kind != DiffLineKind::filler) {
            texts.append((row.*cell).text);
        }
    }
    return texts;
}

QList<TextSlice> textsWithout(const QList<RawDiffLine> &lines, RawLineKind kind)
{
    QList<TextSlice> texts;
    for (const RawDiffLine &line : lines) {
        if (line.kind != kind) {
            texts.append(line.text);
        }
    }
    return texts;
}

void checkRows(const RawHunk &hunk)
{
    const QList<DiffRow> rows = alignRows(hunk.oldStart, hunk.newStart, hunk.lines);

    check(rows == vantrel::fuzz::naiveAlignRows(hunk), "fast rows are the naive ones");
    for (qsizetype i = 0; i < rows.size(); ++i) {
        check(rows[i].id == i, "ids are consecutive from 0");
    }
    check(textsOf(rows, &DiffRow::left) == textsWithout(hunk.lines, RawLineKind::addition),
          "the old side keeps its lines");
    check(textsOf(rows, &DiffRow::right) == textsWithout(hunk.lines, RawLineKind::deletion),
          "the new side keeps its lines");
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    if (!input.isValidUtf8()) {
        return; // Readers of files and processes let only valid text through.
    }
    const QByteArray bytes = input.toByteArray();
    const TextSlice text = TextSlice::fromUtf8(bytes);

    const QList<RawHunk> hunks = parseUnifiedDiff(text);
    check(hunks == vantrel::fuzz::naiveParseUnifiedDiff(bytes), "fast hunks are the naive ones");
    checkLines(text, hunks);
    FileChange file;
    file.hunks = hunks;
    check(fileDiffText(file) == naiveFileDiffText(hunks), "the fast text is the naive one");
    for (const RawHunk &hunk : hunks) {
        checkRows(hunk);
    }

    const RawHunk untracked = untrackedHunk(text);
    check(untracked == vantrel::fuzz::naiveUntrackedHunk(bytes), "the untracked hunk is the naive");
    checkRows(untracked);
}
