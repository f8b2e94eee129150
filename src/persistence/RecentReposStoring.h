#pragma once

#include "models/RecentRepo.h"

#include <QList>
#include <QString>

namespace vantrel {

/// The repositories that were opened, kept across runs of the application, and whether they are
/// still there. Nothing here reports an error: what cannot be read reads as an empty list. Thread:
/// any, also several at once; every call blocks for the disk.
class RecentReposStoring
{
public:
    RecentReposStoring() = default;
    RecentReposStoring(const RecentReposStoring &) = delete;
    RecentReposStoring &operator=(const RecentReposStoring &) = delete;
    virtual ~RecentReposStoring() = default;

    /// Newest first.
    [[nodiscard]] virtual QList<RecentRepo> load() const = 0;

    /// Makes the entry of `path` the newest, with a new id. Paths are compared as they are.
    virtual void record(const QString &name, const QString &path) = 0;

    /// Whether the folder at `path` is a repository: it has a `.git` entry. A file will do, as a
    /// linked worktree has it.
    [[nodiscard]] virtual bool isRepository(const QString &path) const = 0;
};

} // namespace vantrel
