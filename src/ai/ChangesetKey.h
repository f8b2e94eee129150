#pragma once

#include <QList>
#include <QString>

namespace vantrel {

struct FileChange;

/// What identifies a change set: the path and diff text of every file that has hunks, in whatever
/// order they are listed. Comparing large change sets reads their texts; the hash is kept.
class ChangesetKey
{
public:
    struct Entry
    {
        QString path{};
        QString diffText{}; ///< See `fileDiffText`.

        bool operator==(const Entry &) const = default;
    };

    ChangesetKey() = default;
    explicit ChangesetKey(QList<Entry> entries);

    /// Sorted by path, and by diff text where paths are equal.
    [[nodiscard]] const QList<Entry> &entries() const { return m_entries; }

    friend bool operator==(const ChangesetKey &a, const ChangesetKey &b)
    {
        return a.m_hash == b.m_hash && a.m_entries == b.m_entries;
    }
    friend size_t qHash(const ChangesetKey &key, size_t seed = 0) { return key.m_hash ^ seed; }

private:
    QList<Entry> m_entries{};
    size_t m_hash = 0;
};

/// The entries of the files that have hunks, in list order. Writes every line of the change set.
[[nodiscard]] QList<ChangesetKey::Entry> changesetEntries(const QList<FileChange> &files);

} // namespace vantrel
