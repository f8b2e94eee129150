#pragma once

#include "git/ProcessRunnerError.h"
#include "models/FileChange.h"
#include "platform/Result.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace vantrel {

/// How far a listing has come.
struct ListingProgress
{
    qsizetype finishedFiles = 0;
    qsizetype totalFiles = 0;

    bool operator==(const ListingProgress &) const = default;
};

/// What a long listing asks and tells while it runs, both on the listing's own thread.
struct ListingControl
{
    std::function<bool()> isCancelled{}; ///< Asked before each child process; empty means never.
    std::function<void(const ListingProgress &)>
        report{}; ///< Called after each file; may be empty.
};

/// Asks git about a repository; writes nothing. Thread: any but the interface's, since every
/// operation blocks until git has ended; one call at a time.
class GitServicing
{
public:
    GitServicing() = default;
    GitServicing(const GitServicing &) = delete;
    GitServicing &operator=(const GitServicing &) = delete;
    virtual ~GitServicing() = default;

    /// All changed files with their hunks and counts, in git's order. A cancelled listing ends
    /// before its next child process with what it has; nobody reads that.
    [[nodiscard]] virtual Result<QList<FileChange>, ProcessFailure>
    changedFiles(const QUrl &repositoryRoot, const ListingControl &control) = 0;

    [[nodiscard]] virtual Result<QList<RawHunk>, ProcessFailure>
    rawHunks(const FileChange &file, const QUrl &repositoryRoot) = 0;

    /// The branch's name, "HEAD" when detached, nothing when git prints nothing.
    [[nodiscard]] virtual Result<std::optional<QString>, ProcessFailure>
    currentBranch(const QUrl &repositoryRoot) = 0;
};

} // namespace vantrel
