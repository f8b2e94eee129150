#include "ai/ChangesetKey.h"

#include "models/DiffText.h"
#include "models/FileChange.h"

#include <QHash>

#include <algorithm>
#include <tuple>
#include <utility>

namespace vantrel {

namespace {

size_t qHash(const ChangesetKey::Entry &entry, size_t seed = 0)
{
    return qHashMulti(seed, entry.path, entry.diffText);
}

bool isBefore(const ChangesetKey::Entry &a, const ChangesetKey::Entry &b)
{
    return std::tie(a.path, a.diffText) < std::tie(b.path, b.diffText);
}

} // namespace

ChangesetKey::ChangesetKey(QList<Entry> entries)
    : m_entries(std::move(entries))
{
    std::sort(m_entries.begin(), m_entries.end(), isBefore);
    for (const Entry &entry : std::as_const(m_entries)) {
        m_hash = qHash(entry, m_hash);
    }
}

QList<ChangesetKey::Entry> changesetEntries(const QList<FileChange> &files)
{
    QList<ChangesetKey::Entry> entries;
    for (const FileChange &file : files) {
        if (!file.hunks.isEmpty()) {
            entries.append({file.path, fileDiffText(file)});
        }
    }
    return entries;
}

} // namespace vantrel
