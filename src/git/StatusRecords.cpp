#include "git/StatusRecords.h"

#include <QSet>

namespace vantrel {

namespace {

/// Two status letters, a separator, and at least one character of a path.
constexpr qsizetype shortestRecord = 4;
constexpr qsizetype pathPosition = 3;

FileChange fileChange(char index, char workingTree, const QString &path)
{
    FileChange file;
    file.path = path;
    if (index == '?') {
        file.status = ChangeStatus::added;
        file.isUntracked = workingTree == '?';
    } else if (workingTree == '?') {
        file.status = ChangeStatus::added;
    } else if (index == 'D' || workingTree == 'D') {
        file.status = ChangeStatus::deleted;
    } else if (index == 'A') {
        file.status = ChangeStatus::added;
    } else {
        file.status = ChangeStatus::modified;
    }
    return file;
}

} // namespace

QList<FileChange> parseStatusRecords(const TextSlice &output)
{
    QList<FileChange> files;
    QSet<QString> paths;
    QByteArrayView rest = output.utf8();
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf('\0');
        const QByteArrayView record = end < 0 ? rest : rest.first(end);
        rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
        if (record.size() < shortestRecord) {
            continue;
        }
        const QString path = QString::fromUtf8(record.sliced(pathPosition));
        if (!paths.contains(path)) {
            paths.insert(path);
            files.append(fileChange(record[0], record[1], path));
        }
    }
    return files;
}

} // namespace vantrel
