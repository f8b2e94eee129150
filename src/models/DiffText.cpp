#include "models/DiffText.h"

#include "models/FileChange.h"
#include "models/Hunk.h"

#include <QString>
#include <QStringDecoder>

namespace vantrel {

namespace {

char prefix(RawLineKind kind)
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

/// Calls its argument for each line of the hunks, in order, with the line's prefix and text.
template<typename LineVisitor>
void visitLines(const FileChange &file, const LineVisitor &visit)
{
    for (const RawHunk &hunk : file.hunks) {
        for (const RawDiffLine &line : hunk.lines) {
            visit(prefix(line.kind), line.text);
        }
    }
}

template<typename LineVisitor>
void visitLines(const Hunk &hunk, const LineVisitor &visit)
{
    for (const DiffRow &row : hunk.rows) {
        if (row.left.kind == DiffLineKind::deletion) {
            visit('-', row.left.text);
        }
        if (row.right.kind == DiffLineKind::addition) {
            visit('+', row.right.text);
        }
        if (row.left.kind == DiffLineKind::context) {
            visit(' ', row.left.text);
        }
    }
}

/// The prefixed lines, joined by line feeds. The text may be as large as the change set: it is
/// written where it stays, without a copy of its bytes beside it.
template<typename Source>
QString joinedLines(const Source &source)
{
    qsizetype bytes = 0;
    visitLines(source, [&](char, const TextSlice &text) { bytes += 2 + text.utf8().size(); });

    // No byte of UTF-8 becomes more than one unit of UTF-16.
    QString joined(bytes, Qt::Uninitialized);
    QChar *end = joined.data();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    visitLines(source, [&](char prefix, const TextSlice &text) {
        *end++ = QLatin1Char(prefix);
        end = decoder.appendToBuffer(end, text.utf8());
        *end++ = u'\n';
    });
    const qsizetype written = end - joined.constData();
    joined.truncate(qMax(written - 1, qsizetype(0)));
    return joined;
}

} // namespace

QString fileDiffText(const FileChange &file)
{
    return joinedLines(file);
}

QString hunkDiffText(const Hunk &hunk)
{
    return joinedLines(hunk);
}

} // namespace vantrel
