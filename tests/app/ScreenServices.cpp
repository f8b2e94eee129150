#include "ScreenServices.h"

#include "ai/AIResultCache.h"
#include "app/ChangesetNarrative.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace vantrel::test {

namespace {

Task<> askForBranch(GitWorker *gitWorker)
{
    auto asking = gitWorker->currentBranch(QUrl());
    const auto branch = co_await std::move(asking);
    EXPECT_TRUE(branch);
}

Task<QString> immediately(QString text)
{
    co_return text;
}

Task<> discard(Task<QString> task)
{
    co_await std::move(task);
}

} // namespace

ScreenServices::~ScreenServices()
{
    git.close();
    keychain->letGo();
}

void ScreenServices::waitForGit()
{
    git.answerCurrentBranch(std::optional<QString>());
    const Job job(askForBranch(&gitWorker));
    runUntil([&job] { return !job.isActive(); });
}

void ScreenServices::knowNarrative(const QList<FileChange> &files, const QString &narrative)
{
    auto telling =
        coordinator.aiResultCache()->changesetSummary(Changeset(files).key, immediately(narrative));
    const Job job(discard(std::move(telling)));
    runUntil([&job] { return !job.isActive(); });
}

void runUntilIdle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

void runUntil(const std::function<bool()> &isDone)
{
    RunQueue::interfaceThread().runUntil(isDone);
}

} // namespace vantrel::test
