#pragma once

#include "git/FileReading.h"
#include "git/GitServicing.h"
#include "git/ProcessRunning.h"

#include <QStringList>

#include <cstdint>

namespace vantrel {

/// Asks the `git` command; every call asks afresh and nothing is kept between calls.
/// Thread: any but the interface's; one call at a time.
class GitService final : public GitServicing
{
public:
    static constexpr std::int64_t maxUntrackedFileBytes = 2'000'000;

    /// Both must outlive the service. An untracked file larger than `maxFileBytes` is not shown.
    GitService(const ProcessRunning &runner, const FileReading &fileReader,
               std::int64_t maxFileBytes = maxUntrackedFileBytes);

    /// Cost: one process, and one per tracked file (three where a file has no diff against HEAD).
    [[nodiscard]] Result<QList<FileChange>, ProcessFailure>
    changedFiles(const QUrl &repositoryRoot, const ListingControl &control) override;

    [[nodiscard]] Result<QList<RawHunk>, ProcessFailure>
    rawHunks(const FileChange &file, const QUrl &repositoryRoot) override;

    [[nodiscard]] Result<std::optional<QString>, ProcessFailure>
    currentBranch(const QUrl &repositoryRoot) override;

private:
    [[nodiscard]] Result<TextSlice, ProcessFailure> git(const QStringList &arguments,
                                                        const QUrl &repositoryRoot) const;
    [[nodiscard]] Result<QList<RawHunk>, ProcessFailure>
    hunks(const FileChange &file, const QUrl &repositoryRoot, const ListingControl &control) const;
    [[nodiscard]] QList<RawHunk> untrackedHunks(const QString &path,
                                                const QUrl &repositoryRoot) const;
    [[nodiscard]] Result<QList<RawHunk>, ProcessFailure>
    trackedHunks(const QString &path, const QUrl &repositoryRoot,
                 const ListingControl &control) const;

    const ProcessRunning &m_runner;
    const FileReading &m_fileReader;
    std::int64_t m_maxFileBytes;
};

} // namespace vantrel
