#include "git/GitWorker.h"

#include "ListingSamples.h"

#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::rawHunk;
using test::trackedFile;

using Listing = Result<QList<FileChange>, ProcessFailure>;
using Hunks = Result<QList<RawHunk>, ProcessFailure>;
using Branch = Result<std::optional<QString>, ProcessFailure>;

/// A door between two threads.
class Gate
{
public:
    void open()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isOpen = true;
        }
        m_opened.notify_all();
    }

    void wait()
    {
        std::unique_lock lock(m_mutex);
        m_opened.wait(lock, [this] { return m_isOpen; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_opened;
    bool m_isOpen = false; ///< Guarded by `m_mutex`.
};

/// A service whose listing is what a test says; the other answers echo their questions.
class ScriptedGitService final : public GitServicing
{
public:
    explicit ScriptedGitService(std::function<Listing(const ListingControl &)> listing)
        : m_listing(std::move(listing))
    {}

    Listing changedFiles(const QUrl &repositoryRoot, const ListingControl &control) override
    {
        log("changedFiles " + repositoryRoot.toLocalFile().toStdString());
        return m_listing(control);
    }

    Hunks rawHunks(const FileChange &file, const QUrl &repositoryRoot) override
    {
        log("rawHunks " + file.path.toStdString() + " in " +
            repositoryRoot.toLocalFile().toStdString());
        return file.hunks;
    }

    Branch currentBranch(const QUrl &repositoryRoot) override
    {
        log("currentBranch " + repositoryRoot.toLocalFile().toStdString());
        return repositoryRoot.toLocalFile();
    }

    [[nodiscard]] std::vector<std::string> calls() const
    {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

private:
    void log(const std::string &call)
    {
        EXPECT_FALSE(isInterfaceThread());
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(call);
    }

    std::function<Listing(const ListingControl &)> m_listing;
    mutable std::mutex m_mutex;
    std::vector<std::string> m_calls{}; ///< Guarded by `m_mutex`.
};

Task<> list(GitWorker *worker, std::function<void(ListingProgress)> progress,
            std::optional<Listing> *result)
{
    const QUrl root = QUrl::fromLocalFile(u"/r"_s);
    auto listing = worker->changedFiles(root, std::move(progress));
    auto listed = co_await std::move(listing);
    *result = std::move(listed);
}

Task<> readHunks(GitWorker *worker, FileChange file, std::optional<Hunks> *result)
{
    const QUrl root = QUrl::fromLocalFile(u"/r"_s);
    auto reading = worker->rawHunks(std::move(file), root);
    auto hunks = co_await std::move(reading);
    *result = std::move(hunks);
}

Task<> askBranch(GitWorker *worker, QString root, std::optional<Branch> *result)
{
    const QUrl url = QUrl::fromLocalFile(root);
    auto asking = worker->currentBranch(url);
    auto branch = co_await std::move(asking);
    *result = std::move(branch);
}

FileChange sampleFile()
{
    return trackedFile(u"f"_s, ChangeStatus::modified, 1, 0,
                       {rawHunk("@@ -0,0 +1 @@", 0, 1, {"+a"})});
}

Listing emptyListing(const ListingControl &)
{
    return QList<FileChange>();
}

void ignoreProgress(ListingProgress) {}

TEST(GitWorker, HandsBackAListing)
{
    ScriptedGitService service([](const ListingControl &) { return QList{sampleFile()}; });
    GitWorker worker(service);
    std::optional<Listing> result;

    const Job job(list(&worker, ignoreProgress, &result));
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(result.value(), Listing({sampleFile()}));
    EXPECT_EQ(service.calls(), std::vector<std::string>{"changedFiles /r"});
}

TEST(GitWorker, HandsBackAFailureUnchanged)
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = u"fatal\n"_s;
    ScriptedGitService service(
        [&](const ListingControl &) -> Listing { return failure(ProcessFailure(error)); });
    GitWorker worker(service);
    std::optional<Listing> result;

    const Job job(list(&worker, ignoreProgress, &result));
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(result.value(), Listing(failure(ProcessFailure(error))));
}

TEST(GitWorker, HandsBackTheHunksOfAFile)
{
    ScriptedGitService service(emptyListing);
    GitWorker worker(service);
    std::optional<Hunks> result;

    const Job job(readHunks(&worker, sampleFile(), &result));
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(result.value(), Hunks(sampleFile().hunks));
    EXPECT_EQ(service.calls(), std::vector<std::string>{"rawHunks f in /r"});
}

TEST(GitWorker, HandsBackTheBranch)
{
    ScriptedGitService service(emptyListing);
    GitWorker worker(service);
    std::optional<Branch> result;

    const Job job(askBranch(&worker, u"/main"_s, &result));
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(result.value(), Branch(u"/main"_s));
}

TEST(GitWorker, RunsOneCallAfterAnotherInTheOrderOfTheirArrival)
{
    Gate begun;
    Gate gate;
    ScriptedGitService service([&](const ListingControl &) {
        begun.open();
        gate.wait();
        return QList<FileChange>();
    });
    GitWorker worker(service);
    std::optional<Listing> listing;
    std::optional<Branch> branch;
    std::optional<Hunks> hunks;

    const Job first(list(&worker, ignoreProgress, &listing));
    const Job second(askBranch(&worker, u"/b"_s, &branch));
    const Job third(readHunks(&worker, sampleFile(), &hunks));
    RunQueue::interfaceThread().runUntilIdle();
    begun.wait();
    EXPECT_EQ(service.calls(), std::vector<std::string>{"changedFiles /r"});
    gate.open();
    test::spinUntil([&] { return hunks.has_value(); });

    EXPECT_TRUE(listing.has_value());
    EXPECT_TRUE(branch.has_value());
    EXPECT_EQ(service.calls(), (std::vector<std::string>{"changedFiles /r", "currentBranch /b",
                                                         "rawHunks f in /r"}));
}

TEST(GitWorker, ACallWhoseTaskIsGoneNeverBegins)
{
    Gate begun;
    Gate gate;
    ScriptedGitService service([&](const ListingControl &) {
        begun.open();
        gate.wait();
        return QList<FileChange>();
    });
    GitWorker worker(service);
    std::optional<Listing> listing;
    std::optional<Branch> abandoned;
    std::optional<Hunks> abandonedHunks;
    std::optional<Branch> branch;
    const Job first(list(&worker, ignoreProgress, &listing));
    Job second(askBranch(&worker, u"/abandoned"_s, &abandoned));
    Job third(readHunks(&worker, sampleFile(), &abandonedHunks));
    const Job fourth(askBranch(&worker, u"/b"_s, &branch));
    RunQueue::interfaceThread().runUntilIdle();
    begun.wait();

    second.cancel();
    third.cancel();
    gate.open();
    test::spinUntil([&] { return branch.has_value(); });

    EXPECT_FALSE(abandoned.has_value());
    EXPECT_FALSE(abandonedHunks.has_value());
    EXPECT_EQ(service.calls(), (std::vector<std::string>{"changedFiles /r", "currentBranch /b"}));
}

TEST(GitWorker, AListingLearnsThatItsTaskIsGone)
{
    Gate begun;
    Gate cancelled;
    bool wasCancelledBefore = true;
    bool wasCancelledAfter = false;
    std::optional<Listing> result;

    {
        ScriptedGitService service([&](const ListingControl &control) {
            wasCancelledBefore = control.isCancelled();
            begun.open();
            cancelled.wait();
            wasCancelledAfter = control.isCancelled();
            return QList<FileChange>();
        });
        GitWorker worker(service);
        Job job(list(&worker, ignoreProgress, &result));
        RunQueue::interfaceThread().runUntilIdle();
        begun.wait();
        job.cancel();
        cancelled.open();
    }
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_FALSE(wasCancelledBefore);
    EXPECT_TRUE(wasCancelledAfter);
    EXPECT_FALSE(result.has_value());
}

TEST(GitWorker, ProgressArrivesOnTheInterfaceThread)
{
    Gate seen;
    ScriptedGitService service([&](const ListingControl &control) {
        control.report({1, 2});
        seen.wait();
        return QList<FileChange>();
    });
    GitWorker worker(service);
    QList<ListingProgress> reports;
    std::optional<Listing> result;

    const Job job(list(
        &worker,
        [&](ListingProgress progress) {
            EXPECT_TRUE(isInterfaceThread());
            reports.append(progress);
            seen.open();
        },
        &result));
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(reports, (QList<ListingProgress>{{1, 2}}));
}

TEST(GitWorker, ManyReportsBecomeOneWithTheNewest)
{
    Gate mayReport;
    Gate reported;
    Gate seen;
    ScriptedGitService service([&](const ListingControl &control) {
        mayReport.wait();
        for (qsizetype i = 0; i <= 10'000; ++i) {
            control.report({i, 10'000});
        }
        reported.open();
        seen.wait();
        return QList<FileChange>();
    });
    GitWorker worker(service);
    QList<ListingProgress> reports;
    std::optional<Listing> result;

    const Job job(list(
        &worker,
        [&](ListingProgress progress) {
            reports.append(progress);
            seen.open();
        },
        &result));
    RunQueue::interfaceThread().runUntilIdle();
    mayReport.open();
    reported.wait();
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(reports, (QList<ListingProgress>{{10'000, 10'000}}));
}

TEST(GitWorker, AReportAfterADeliveredOneIsDeliveredToo)
{
    Gate first;
    Gate second;
    ScriptedGitService service([&](const ListingControl &control) {
        control.report({1, 2});
        first.wait();
        control.report({2, 2});
        second.wait();
        return QList<FileChange>();
    });
    GitWorker worker(service);
    QList<ListingProgress> reports;
    std::optional<Listing> result;

    const Job job(list(
        &worker,
        [&](ListingProgress progress) {
            reports.append(progress);
            (progress.finishedFiles == 1 ? first : second).open();
        },
        &result));
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(reports, (QList<ListingProgress>{{1, 2}, {2, 2}}));
}

TEST(GitWorker, NoProgressArrivesOnceTheTaskIsGone)
{
    Gate mayReport;
    Gate reported;
    QList<ListingProgress> reports;
    std::optional<Listing> result;

    {
        ScriptedGitService service([&](const ListingControl &control) {
            mayReport.wait();
            control.report({1, 2});
            reported.open();
            return QList<FileChange>();
        });
        GitWorker worker(service);
        Job job(
            list(&worker, [&](ListingProgress progress) { reports.append(progress); }, &result));
        RunQueue::interfaceThread().runUntilIdle();
        // The report waits for the next turn of the queue, in which its task is gone.
        mayReport.open();
        reported.wait();
        job.cancel();
    }
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(reports, QList<ListingProgress>());
    EXPECT_FALSE(result.has_value());
}

TEST(GitWorker, TheProgressCallMayDestroyItsTask)
{
    Gate seen;
    std::optional<Job> job;
    std::optional<Listing> result;
    int count = 0;

    {
        ScriptedGitService service([&](const ListingControl &control) {
            control.report({1, 2});
            seen.wait();
            control.report({2, 2});
            return QList<FileChange>();
        });
        GitWorker worker(service);
        // Its own memory shows to the address sanitizer whether the call outlives itself.
        const auto step = std::make_shared<int>(1);
        job.emplace(list(
            &worker,
            [&, step](ListingProgress) {
                job.reset();
                count += *step;
                seen.open();
            },
            &result));
        test::spinUntil([&] { return count > 0; });
    }
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(count, 1);
    EXPECT_FALSE(result.has_value());
}

TEST(GitWorker, AListingNeedsNoProgressCall)
{
    ScriptedGitService service([](const ListingControl &control) {
        control.report({1, 1});
        return QList<FileChange>();
    });
    GitWorker worker(service);
    std::optional<Listing> result;

    const Job job(list(&worker, {}, &result));
    test::spinUntil([&] { return result.has_value(); });

    EXPECT_EQ(result.value(), Listing(QList<FileChange>()));
}

} // namespace
} // namespace vantrel
