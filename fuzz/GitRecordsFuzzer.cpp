// What git prints about files, records that end in null characters: the readers find what the naive
// forms find, and no path is there twice.

#include "FuzzCheck.h"

#include "git/Gitlinks.h"
#include "git/StatusRecords.h"

#include <QSet>

namespace {

using vantrel::ChangeStatus;
using vantrel::FileChange;
using vantrel::TextSlice;
using vantrel::fuzz::check;

ChangeStatus naiveStatus(const QByteArray &letters)
{
    if (letters.contains('?')) {
        return ChangeStatus::added;
    }
    if (letters.contains('D')) {
        return ChangeStatus::deleted;
    }
    return letters.startsWith('A') ? ChangeStatus::added : ChangeStatus::modified;
}

QList<FileChange> naiveStatusRecords(const QByteArray &output)
{
    QList<FileChange> files;
    QSet<QByteArray> paths;
    for (const QByteArray &record : output.split('\0')) {
        const QByteArray letters = record.left(2);
        const QByteArray path = record.mid(3);
        if (path.isEmpty() || paths.contains(path)) {
            continue;
        }
        paths.insert(path);
        FileChange file;
        file.path = TextSlice::fromUtf8(path).toString();
        file.status = naiveStatus(letters);
        file.isUntracked = letters == "??";
        files.append(file);
    }
    return files;
}

QByteArrayList naiveGitlinkPaths(const QByteArray &output)
{
    QByteArrayList paths;
    for (const QByteArray &record : output.split('\0')) {
        QByteArrayList fields = record.split('\t');
        if (!record.startsWith("160000 ")) {
            continue;
        }
        if (fields.size() > 1) {
            fields.removeFirst();
        }
        paths.append(fields.join('\t'));
    }
    return paths;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const QByteArray output = input.toByteArray();
    check(gitlinkPaths(output) == naiveGitlinkPaths(output), "fast gitlinks are the naive ones");
    if (!output.isValidUtf8()) {
        return; // The reader of processes lets only valid text through.
    }

    const QList<FileChange> files = parseStatusRecords(TextSlice::fromUtf8(output));

    check(files == naiveStatusRecords(output), "fast files are the naive ones");
}
