#pragma once

#include "git/GitServicing.h"
#include "platform/jobs/SerialWorker.h"
#include "platform/jobs/Task.h"

#include <functional>

namespace vantrel {

/// The git service on a thread of its own: one operation at a time, in order of call, with the
/// results handed back on the interface thread. Destroying a task abandons its operation: one that
/// has not begun never runs, and a listing stops before its next child process.
class GitWorker final
{
public:
    /// `service` must outlive the worker.
    explicit GitWorker(GitServicing &service);

    /// `progress` is called on the interface thread, never after the task was destroyed.
    Task<Result<QList<FileChange>, ProcessFailure>>
    changedFiles(QUrl repositoryRoot, std::function<void(ListingProgress)> progress);

    Task<Result<QList<RawHunk>, ProcessFailure>> rawHunks(FileChange file, QUrl repositoryRoot);

    Task<Result<std::optional<QString>, ProcessFailure>> currentBranch(QUrl repositoryRoot);

private:
    GitServicing &m_service;
    SerialWorker m_worker;
};

} // namespace vantrel
