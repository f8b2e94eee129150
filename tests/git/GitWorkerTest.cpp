// The worker over a service that the test steers, on the worker's real thread.

#include "git/GitWorker.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"

#include <gtest/gtest.h>

#include <QThread>

#include <atomic>
#include <semaphore>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

const QUrl root = QUrl(QStringLiteral("file:///repo"));

/// Lists files one step at a time: each waits for the test's permission.
class SteeredGitService final : public GitServicing
{
public:
    Result<QList<FileChange>, ProcessFailure> changedFiles(const QUrl &,
                                                           const ListingControl &control) override
    {
        QList<FileChange> files;
        for (int i = 0; i < total && !control.isCancelled(); ++i) {
            ++started;
            begun.release();
            permission.acquire();
            FileChange file;
            file.path = QString::number(i);
            files.append(file);
            control.report(ListingProgress{i + 1, total});
        }
        isOver = true;
        return files;
    }
    Result<QList<RawHunk>, ProcessFailure> rawHunks(const FileChange &, const QUrl &) override
    {
        threads.append(QThread::currentThread());
        return QList<RawHunk>{RawHunk()};
    }
    Result<std::optional<QString>, ProcessFailure> currentBranch(const QUrl &) override
    {
        threads.append(QThread::currentThread());
        return std::optional(u"main"_s);
    }

    int total = 3;
    std::atomic<int> started = 0;
    std::atomic<bool> isOver = false;
    std::counting_semaphore<> begun{0};
    std::counting_semaphore<> permission{0};
    QList<QThread *> threads{};
};

Task<> list(GitWorker *worker, QList<ListingProgress> *reports, QList<FileChange> *files)
{
    std::function<void(ListingProgress)> note = [reports](const ListingProgress &progress) {
        reports->append(progress);
    };
    auto listing = worker->changedFiles(root, note);
    const auto listed = co_await std::move(listing);
    *files = listed.value();
}

Task<> askBranch(GitWorker *worker, QString *branch)
{
    const auto asked = co_await worker->currentBranch(root);
    *branch = asked.value().value();
}

Task<> askHunks(GitWorker *worker, qsizetype *count)
{
    FileChange file;
    const auto asked = co_await worker->rawHunks(file, root);
    *count = asked.value().size();
}

TEST(GitWorker, HandsTheListingAndItsProgressToTheInterfaceThread)
{
    SteeredGitService service;
    GitWorker worker(service);
    QList<ListingProgress> reports;
    QList<FileChange> files;

    Job job(list(&worker, &reports, &files));
    service.permission.release(3);
    RunQueue::interfaceThread().runUntil([&] { return !job.isActive(); });

    EXPECT_EQ(files.size(), 3);
    ASSERT_FALSE(reports.isEmpty());
    EXPECT_EQ(reports.last(), (ListingProgress{3, 3}));
}

TEST(GitWorker, StopsACancelledListingWithinOneStepAndReportsNothingMore)
{
    SteeredGitService service;
    service.total = 2000;
    QList<ListingProgress> reports;
    QList<FileChange> files;
    {
        GitWorker worker(service);
        Job job(list(&worker, &reports, &files));
        RunQueue::interfaceThread().runUntilIdle();
        service.begun.acquire();

        job.cancel();
        service.permission.release(2000);
    } // Joins the thread.
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(service.started, 1);
    EXPECT_TRUE(service.isOver);
    EXPECT_TRUE(reports.isEmpty());
    EXPECT_TRUE(files.isEmpty());
}

TEST(GitWorker, RunsOneCallAtATimeOffTheInterfaceThread)
{
    SteeredGitService service;
    GitWorker worker(service);
    QString branch;
    qsizetype hunks = 0;

    Job first(askBranch(&worker, &branch));
    Job second(askHunks(&worker, &hunks));
    RunQueue::interfaceThread().runUntil([&] { return !first.isActive() && !second.isActive(); });

    EXPECT_EQ(branch, u"main"_s);
    EXPECT_EQ(hunks, 1);
    ASSERT_EQ(service.threads.size(), 2);
    EXPECT_EQ(service.threads.at(0), service.threads.at(1));
    EXPECT_NE(service.threads.at(0), QThread::currentThread());
}

} // namespace
} // namespace vantrel
