#include "LargeFile.h"

#include "Samples.h"

namespace vantrel::bench {

using namespace Qt::Literals::StringLiterals;

FileChange largeFile(int lines, int linesOfHunk, const QString &text)
{
    const TextSlice line = TextSlice::fromString(text);
    QList<RawHunk> hunks;
    for (int first = 0; first < lines; first += linesOfHunk) {
        RawHunk hunk = test::changedLine(first + 1, text, text);
        hunk.lines = QList<RawDiffLine>(linesOfHunk, RawDiffLine{RawLineKind::deletion, line});
        hunk.lines += QList<RawDiffLine>(linesOfHunk, RawDiffLine{RawLineKind::addition, line});
        hunks.append(hunk);
    }
    return test::changedFile(u"large.cpp"_s, hunks);
}

QString ordinaryLine()
{
    return u"    const auto value = compute(index, other->field[17], \"text\"); // a comment about it"_s;
}

} // namespace vantrel::bench
