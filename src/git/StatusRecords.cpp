#include "git/StatusRecords.h"

#include <QSet>

namespace vantrel {

namespace {

/// Two status letters, a separator, and at least one character of a path.
constexpr qsizetype shortestRecord = 4;
constexpr qsizetype pathPosition = 3;

ChangeStatus statusOf(char index, char workingTree)
{
    if (index == '?' || workingTree == '?') {
        return ChangeStatus::added;
    }
    if (index == 'D' || workingTree == 'D') {
        return ChangeStatus::deleted;
    }
    return index == 'A' ? ChangeStatus::added : ChangeStatus::modified;
}

FileChange fileChange(char index, char workingTree, const QString &path)
{
    FileChange file;
    file.path = path;
    file.status = statusOf(index, workingTree);
    file.isUntracked = index == '?' && workingTree == '?';
    return file;
}

} // namespace

QList<FileChange> parseStatusRecords(const TextSlice &output)
{
    QList<FileChange> files;
    QSet<QString> paths;
    const QByteArrayView text = output.utf8();
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype found = text.indexOf('\0', begin);
        const qsizetype end = found < 0 ? text.size() : found;
        if (end - begin >= shortestRecord) {
            const qsizetype pathBegin = begin + pathPosition;
            const QString path = output.slice(pathBegin, end - pathBegin).toString();
            if (!paths.contains(path)) {
                paths.insert(path);
                files.append(fileChange(text[begin], text[begin + 1], path));
            }
        }
        begin = end + 1;
    }
    return files;
}

} // namespace vantrel
