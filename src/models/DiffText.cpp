#include "models/DiffText.h"

#include "models/FileChange.h"
#include "models/Hunk.h"

#include <QByteArray>

namespace vantrel {

namespace {

/// Collects prefixed lines, joined by line feeds.
class PrefixedLines
{
public:
    void append(char prefix, const TextSlice &text)
    {
        if (!m_isFirst) {
            m_bytes.append('\n');
        }
        m_isFirst = false;
        m_bytes.append(prefix);
        m_bytes.append(text.utf8());
    }

    [[nodiscard]] QString text() const { return QString::fromUtf8(m_bytes); }

private:
    QByteArray m_bytes;
    bool m_isFirst = true;
};

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

} // namespace

QString fileDiffText(const FileChange &file)
{
    PrefixedLines lines;
    for (const RawHunk &hunk : file.hunks) {
        for (const RawDiffLine &line : hunk.lines) {
            lines.append(prefix(line.kind), line.text);
        }
    }
    return lines.text();
}

QString hunkDiffText(const Hunk &hunk)
{
    PrefixedLines lines;
    for (const DiffRow &row : hunk.rows) {
        if (row.left.kind == DiffLineKind::deletion) {
            lines.append('-', row.left.text);
        }
        if (row.right.kind == DiffLineKind::addition) {
            lines.append('+', row.right.text);
        }
        if (row.left.kind == DiffLineKind::context) {
            lines.append(' ', row.left.text);
        }
    }
    return lines.text();
}

} // namespace vantrel
