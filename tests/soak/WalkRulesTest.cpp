#include "WalkRules.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qint64 megabyte = qint64(1024) * 1024;

QList<QuietPoint> evenPoints()
{
    QList<QuietPoint> points;
    for (int i = 0; i < 12; ++i) {
        QuietPoint point;
        point.step = i;
        point.heap = (50 + i % 3) * megabyte;
        point.reading.descriptors = {u"pipe:"_s, u"pipe:"_s, u"socket:"_s};
        point.reading.threads = 9 + i % 2;
        points.append(point);
    }
    return points;
}

TEST(WalkRules, AnEvenWalkHasNoFinding)
{
    EXPECT_EQ(findingsOf(evenPoints()), QStringList());
    EXPECT_EQ(findingsOf({}), QStringList());
}

TEST(WalkRules, ADescriptorThatIsLeftIsFound)
{
    QList<QuietPoint> points = evenPoints();
    points[9].reading.descriptors.append(u"pipe:"_s);

    EXPECT_EQ(findingsOf(points),
              QStringList{u"after step 9, 3 descriptors are pipe:, at first at most 2"_s});
}

TEST(WalkRules, ThreadsThatAreLeftAreFound)
{
    QList<QuietPoint> points = evenPoints();
    points[9].reading.threads = 15;

    EXPECT_EQ(findingsOf(points),
              QStringList{u"after step 9 there are 15 threads, at first at most 10"_s});
}

TEST(WalkRules, MemoryThatGrowsAllTheTimeIsFoundAndOneThatVariesIsNot)
{
    QList<QuietPoint> points = evenPoints();
    points[8].heap += 30 * megabyte;
    EXPECT_EQ(findingsOf(points), QStringList());

    for (qsizetype i = 0; i < points.size(); ++i) {
        points[i].heap += i * 2 * megabyte;
    }
    EXPECT_EQ(findingsOf(points).size(), 1);
}

TEST(WalkRules, MemoryThatHoldsMoreConversationsIsNoFinding)
{
    QList<QuietPoint> points = evenPoints();
    for (qsizetype i = 0; i < points.size(); ++i) {
        points[i].heap += i * 2 * megabyte;
        points[i].conversations = i * 2 * megabyte;
    }

    EXPECT_EQ(findingsOf(points), QStringList());
}

TEST(WalkRules, AHangIsWhatTheThreadDidItself)
{
    EXPECT_FALSE(isHang({300, 90, 205, {}}));
    EXPECT_TRUE(isHang({300, 150, 20, {}}));
    EXPECT_TRUE(isHang({300, 0, 20, {}}));
}

TEST(WalkRules, OnlyMessagesThatFaultsLeadToAreExpected)
{
    EXPECT_TRUE(isExpectedMessage({}));
    EXPECT_TRUE(isExpectedMessage(
        u"vantrel: SuggestedQuestions: Suggestion refresh failed; keeping the previous chips: No."_s));
    EXPECT_FALSE(isExpectedMessage(u"vantrel: qrc:/qt/qml/Vantrel/Main.qml:1: TypeError"_s));
    EXPECT_FALSE(isExpectedMessage(u"free(): invalid pointer"_s));
}

} // namespace
} // namespace vantrel::test
