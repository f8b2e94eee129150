#include "ListingSamples.h"

#include <ostream>

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

} // namespace

void PrintTo(const RawHunk &hunk, std::ostream *stream)
{
    *stream << hunk.header.toString().toStdString() << " (" << hunk.oldStart << ", "
            << hunk.newStart << ")\n";
    for (const RawDiffLine &line : hunk.lines) {
        *stream << prefix(line.kind) << line.text.toString().toStdString() << '\n';
    }
}

void PrintTo(const FileChange &file, std::ostream *stream)
{
    *stream << rawValue(file.status).toStdString() << (file.isUntracked ? "?" : "") << " \""
            << file.path.toStdString() << "\" +" << file.additions << " -" << file.deletions
            << '\n';
    for (const RawHunk &hunk : file.hunks) {
        PrintTo(hunk, stream);
    }
}

void PrintTo(const Result<QList<FileChange>, ProcessFailure> &listing, std::ostream *stream)
{
    if (!listing) {
        *stream << listing.error().description().toStdString();
        return;
    }
    for (const FileChange &file : *listing) {
        PrintTo(file, stream);
    }
}

} // namespace vantrel

namespace vantrel::test {

RawHunk rawHunk(const QByteArray &header, std::int64_t oldStart, std::int64_t newStart,
                const QByteArrayList &lines)
{
    RawHunk hunk;
    hunk.header = TextSlice::fromUtf8(header);
    hunk.oldStart = oldStart;
    hunk.newStart = newStart;
    for (const QByteArray &line : lines) {
        RawDiffLine diffLine;
        diffLine.kind = line.startsWith('+')   ? RawLineKind::addition
                        : line.startsWith('-') ? RawLineKind::deletion
                                               : RawLineKind::context;
        diffLine.text = TextSlice::fromUtf8(line.sliced(1));
        hunk.lines.append(diffLine);
    }
    return hunk;
}

RawHunk placeholderHunk()
{
    return rawHunk("@@ -0,0 +1,0 @@", 0, 1, {"+(file too large or binary to display)"});
}

FileChange trackedFile(const QString &path, ChangeStatus status, std::int64_t additions,
                       std::int64_t deletions, const QList<RawHunk> &hunks)
{
    FileChange file;
    file.path = path;
    file.status = status;
    file.additions = additions;
    file.deletions = deletions;
    file.hunks = hunks;
    return file;
}

FileChange untrackedFile(const QString &path, std::int64_t additions, const QList<RawHunk> &hunks)
{
    FileChange file = trackedFile(path, ChangeStatus::added, additions, 0, hunks);
    file.isUntracked = true;
    return file;
}

} // namespace vantrel::test
