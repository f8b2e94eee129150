#include "persistence/KeychainAccessNotice.h"

#include "platform/UserDefaults.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

Task<> waitFor(KeychainAccessNotice *notice, QString name, QStringList *log)
{
    co_await notice->showIfNeededAndWait();
    log->append(name);
}

void runUntilIdle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

class KeychainAccessNoticeTest : public testing::Test
{
protected:
    KeychainAccessNoticeTest()
    {
        QObject::connect(&notice, &KeychainAccessNotice::isShowingNoticeChanged, &notice, [this] {
            log.append(notice.isShowingNotice() ? u"shown"_s : u"hidden"_s);
        });
    }

    /// A job that waits on the notice and then logs `name`.
    Job startWaiting(const QString &name)
    {
        Job job(waitFor(&notice, name, &log));
        runUntilIdle();
        return job;
    }

    [[nodiscard]] std::optional<bool> acknowledgement() const
    {
        return defaults.boolean(u"keychainAccessNotice.hasAcknowledged"_s);
    }

    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    KeychainAccessNotice notice{defaults};
    QStringList log{};
};

TEST_F(KeychainAccessNoticeTest, IsNotShownBeforeSomebodyWaits)
{
    EXPECT_FALSE(notice.isShowingNotice());
    EXPECT_EQ(acknowledgement(), std::nullopt);
}

TEST_F(KeychainAccessNoticeTest, TellsWhetherItWasAcknowledgedInThisLaunchOrAnother)
{
    EXPECT_FALSE(notice.hasAcknowledged());

    notice.acknowledge();

    EXPECT_TRUE(notice.hasAcknowledged());
    EXPECT_TRUE(KeychainAccessNotice(defaults).hasAcknowledged());
}

TEST_F(KeychainAccessNoticeTest, IsShownWhileSomebodyWaits)
{
    const Job job = startWaiting(u"first"_s);

    EXPECT_TRUE(job.isActive());
    EXPECT_TRUE(notice.isShowingNotice());
    EXPECT_EQ(log, QStringList{u"shown"_s});
    EXPECT_EQ(acknowledgement(), std::nullopt);
}

TEST_F(KeychainAccessNoticeTest, OneContinueReleasesTwoWaitersInOrder)
{
    const Job first = startWaiting(u"first"_s);
    const Job second = startWaiting(u"second"_s);

    notice.acknowledge();
    runUntilIdle();

    EXPECT_EQ(log, QStringList({u"shown"_s, u"hidden"_s, u"first"_s, u"second"_s}));
    EXPECT_FALSE(first.isActive());
    EXPECT_FALSE(second.isActive());
    EXPECT_EQ(acknowledgement(), true);
}

TEST_F(KeychainAccessNoticeTest, AThirdWaitAfterwardsReturnsAtOnce)
{
    const Job first = startWaiting(u"first"_s);
    const Job second = startWaiting(u"second"_s);
    notice.acknowledge();
    runUntilIdle();
    log.clear();

    const Job third = startWaiting(u"third"_s);

    EXPECT_EQ(log, QStringList{u"third"_s});
    EXPECT_FALSE(third.isActive());
    EXPECT_FALSE(notice.isShowingNotice());
}

TEST_F(KeychainAccessNoticeTest, ADismissalAcknowledges)
{
    const Job first = startWaiting(u"first"_s);
    const Job second = startWaiting(u"second"_s);

    notice.setIsShowingNotice(false);
    runUntilIdle();

    EXPECT_EQ(log, QStringList({u"shown"_s, u"hidden"_s, u"first"_s, u"second"_s}));
    EXPECT_EQ(acknowledgement(), true);
}

TEST_F(KeychainAccessNoticeTest, ADismissalThroughThePropertyAcknowledges)
{
    const Job first = startWaiting(u"first"_s);

    notice.setProperty("isShowingNotice", false);
    runUntilIdle();

    EXPECT_EQ(log, QStringList({u"shown"_s, u"hidden"_s, u"first"_s}));
    EXPECT_EQ(acknowledgement(), true);
}

TEST_F(KeychainAccessNoticeTest, HidingWithoutWaitersAcknowledgesNothing)
{
    notice.setIsShowingNotice(true);

    notice.setIsShowingNotice(false);

    EXPECT_EQ(log, QStringList({u"shown"_s, u"hidden"_s}));
    EXPECT_EQ(acknowledgement(), std::nullopt);
}

TEST_F(KeychainAccessNoticeTest, KeepingTheSameValueDoesNothing)
{
    notice.setIsShowingNotice(false);
    EXPECT_EQ(log, QStringList());

    const Job first = startWaiting(u"first"_s);
    notice.setIsShowingNotice(true);
    runUntilIdle();

    EXPECT_EQ(log, QStringList{u"shown"_s});
    EXPECT_TRUE(first.isActive());
    EXPECT_EQ(acknowledgement(), std::nullopt);
}

TEST_F(KeychainAccessNoticeTest, AnAcknowledgementWithoutWaitersLetsLaterOnesPass)
{
    notice.acknowledge();

    const Job first = startWaiting(u"first"_s);

    EXPECT_EQ(log, QStringList{u"first"_s});
    EXPECT_FALSE(first.isActive());
    EXPECT_EQ(acknowledgement(), true);
}

TEST_F(KeychainAccessNoticeTest, IsNotShownAtALaterLaunch)
{
    notice.acknowledge();
    KeychainAccessNotice next(defaults);
    QStringList nextLog;

    const Job job(waitFor(&next, u"next"_s, &nextLog));
    runUntilIdle();

    EXPECT_EQ(nextLog, QStringList{u"next"_s});
    EXPECT_FALSE(next.isShowingNotice());
}

TEST_F(KeychainAccessNoticeTest, IsNotShownOnceAnotherInstanceWasAcknowledged)
{
    KeychainAccessNotice other(defaults);
    other.acknowledge();

    const Job job = startWaiting(u"first"_s);

    EXPECT_EQ(log, QStringList{u"first"_s});
}

TEST_F(KeychainAccessNoticeTest, IsShownAtALaterLaunchWhenNobodyAcknowledged)
{
    const Job first = startWaiting(u"first"_s);
    KeychainAccessNotice next(defaults);
    QStringList nextLog;

    const Job job(waitFor(&next, u"next"_s, &nextLog));
    runUntilIdle();

    EXPECT_EQ(nextLog, QStringList());
    EXPECT_TRUE(next.isShowingNotice());
}

TEST_F(KeychainAccessNoticeTest, AWaiterWhoseJobIsCancelledLeaves)
{
    Job first = startWaiting(u"first"_s);
    const Job second = startWaiting(u"second"_s);

    first.cancel();
    notice.acknowledge();
    runUntilIdle();

    EXPECT_EQ(log, QStringList({u"shown"_s, u"hidden"_s, u"second"_s}));
}

TEST_F(KeychainAccessNoticeTest, HidingAfterTheLastWaiterLeftAcknowledgesNothing)
{
    Job first = startWaiting(u"first"_s);
    first.cancel();

    notice.setIsShowingNotice(false);
    runUntilIdle();

    EXPECT_EQ(log, QStringList({u"shown"_s, u"hidden"_s}));
    EXPECT_EQ(acknowledgement(), std::nullopt);
}

TEST_F(KeychainAccessNoticeTest, HasRecordedTheAcknowledgementBeforeItHides)
{
    std::optional<bool> whenHidden;
    QObject::connect(&notice, &KeychainAccessNotice::isShowingNoticeChanged, &notice,
                     [&] { whenHidden = acknowledgement(); });
    const Job first = startWaiting(u"first"_s);

    notice.acknowledge();

    EXPECT_EQ(whenHidden, true);
}

TEST(KeychainAccessNotice, ReleasesItsWaitersWhenTheAcknowledgementCannotBeSaved)
{
    const QTemporaryDir folder;
    QFile inTheWay(folder.filePath(u"preferences"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    UserDefaults defaults(inTheWay.fileName());
    KeychainAccessNotice notice(defaults);
    QStringList log;
    const Job first(waitFor(&notice, u"first"_s, &log));
    runUntilIdle();
    test::expectOneMessage(
        u"the preferences could not be saved, and are kept until they can be: "_s);

    notice.acknowledge();
    const Job second(waitFor(&notice, u"second"_s, &log));
    runUntilIdle();

    EXPECT_EQ(log, QStringList({u"first"_s, u"second"_s}));
    EXPECT_FALSE(notice.isShowingNotice());
    EXPECT_TRUE(notice.hasAcknowledged());
}

} // namespace
} // namespace vantrel
