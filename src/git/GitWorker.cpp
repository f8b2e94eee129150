#include "git/GitWorker.h"

#include <atomic>
#include <memory>
#include <utility>

namespace vantrel {

namespace {

/// Carries progress from the listing's thread to the interface thread: the newest only, so that a
/// fast listing cannot flood it, and none once the listing's task is gone.
class ProgressRelay final : public std::enable_shared_from_this<ProgressRelay>
{
public:
    explicit ProgressRelay(std::function<void(ListingProgress)> call)
        : m_call(std::move(call))
    {}

    /// Thread: the listing's.
    void report(const ListingProgress &progress)
    {
        m_finished.store(progress.finishedFiles, std::memory_order_relaxed);
        m_total.store(progress.totalFiles, std::memory_order_relaxed);
        if (!m_isPosted.exchange(true)) {
            RunQueue::interfaceThread().postFromThread(
                [relay = shared_from_this()] { relay->deliver(); });
        }
    }

    /// Thread: interface.
    void stop() { m_call = {}; }

private:
    void deliver()
    {
        // An exchange, since it must see what was written before the mark that it takes away.
        m_isPosted.exchange(false);
        // A copy, since the call may destroy the task and so take the relay's own away.
        const auto call = m_call;
        if (call) {
            call(ListingProgress{m_finished.load(std::memory_order_relaxed),
                                 m_total.load(std::memory_order_relaxed)});
        }
    }

    std::function<void(ListingProgress)> m_call; ///< Interface thread only.
    std::atomic<qsizetype> m_finished = 0;
    std::atomic<qsizetype> m_total = 0;
    std::atomic<bool> m_isPosted = false;
};

class RelayEnd
{
public:
    explicit RelayEnd(std::shared_ptr<ProgressRelay> relay)
        : m_relay(std::move(relay))
    {}
    RelayEnd(const RelayEnd &) = delete;
    RelayEnd &operator=(const RelayEnd &) = delete;
    ~RelayEnd() { m_relay->stop(); }

private:
    std::shared_ptr<ProgressRelay> m_relay;
};

} // namespace

GitWorker::GitWorker(GitServicing &service)
    : m_service(service)
{}

Task<Result<QList<FileChange>, ProcessFailure>>
GitWorker::changedFiles(QUrl repositoryRoot, std::function<void(ListingProgress)> progress)
{
    const auto relay = std::make_shared<ProgressRelay>(std::move(progress));
    const RelayEnd relayEnd(relay);
    auto list = [service = &m_service, repositoryRoot, relay](const WorkControl &control) {
        ListingControl listing;
        listing.isCancelled = [&control] { return control.isAbandoned(); };
        listing.report = [&relay](const ListingProgress &current) { relay->report(current); };
        return service->changedFiles(repositoryRoot, listing);
    };
    auto listed = m_worker.run(std::move(list));
    co_return co_await std::move(listed);
}

Task<Result<QList<RawHunk>, ProcessFailure>> GitWorker::rawHunks(FileChange file,
                                                                 QUrl repositoryRoot)
{
    auto read = [service = &m_service, file, repositoryRoot](const WorkControl &) {
        return service->rawHunks(file, repositoryRoot);
    };
    auto hunks = m_worker.run(std::move(read));
    co_return co_await std::move(hunks);
}

Task<Result<std::optional<QString>, ProcessFailure>> GitWorker::currentBranch(QUrl repositoryRoot)
{
    auto ask = [service = &m_service, repositoryRoot](const WorkControl &) {
        return service->currentBranch(repositoryRoot);
    };
    auto branch = m_worker.run(std::move(ask));
    co_return co_await std::move(branch);
}

} // namespace vantrel
