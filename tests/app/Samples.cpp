#include "Samples.h"

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

Repo sampleRepo(const QString &name)
{
    Repo repo;
    repo.id = QUuid::createUuidV5(QUuid(), name);
    repo.url = QUrl::fromLocalFile(u'/' + name);
    repo.name = name;
    return repo;
}

RawHunk changedLine(int line, const QString &old, const QString &now)
{
    RawHunk hunk;
    hunk.header = TextSlice::fromString(u"@@ -%1 +%1 @@"_s.arg(line));
    hunk.oldStart = line;
    hunk.newStart = line;
    hunk.lines = {RawDiffLine{RawLineKind::deletion, TextSlice::fromString(old)},
                  RawDiffLine{RawLineKind::addition, TextSlice::fromString(now)}};
    return hunk;
}

FileChange changedFile(const QString &path, const QList<RawHunk> &hunks)
{
    FileChange file;
    file.path = path;
    file.additions = hunks.size();
    file.deletions = hunks.size();
    file.hunks = hunks;
    return file;
}

FileChange changedFile(const QString &path, int hunkCount)
{
    QList<RawHunk> hunks;
    for (int index = 0; index < hunkCount; ++index) {
        hunks.append(changedLine(10 * index + 1, u"old %1"_s.arg(index), u"new %1"_s.arg(index)));
    }
    return changedFile(path, hunks);
}

} // namespace vantrel::test
