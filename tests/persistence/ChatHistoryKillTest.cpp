#include "persistence/ChatHistoryStore.h"
#include "persistence/NumberedHistory.h"
#include "platform/UserDefaults.h"
#include "support/ProcessRun.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <random>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::ChildProcess;
using test::newestNumber;
using test::numberedHistory;
using test::ProcessRun;

constexpr int firstNumber = 3;
constexpr int rounds = 120;
constexpr unsigned maxLifeMicroseconds = 20'000;

TEST(ChatHistoryKill, AProcessKilledAtAnyMomentLeavesTheOldOrTheNewHistory)
{
    const QTemporaryDir folder;
    UserDefaults defaults(folder.path());
    ChatHistoryStore history(defaults);
    for (int number = 1; number <= firstNumber; ++number) {
        history.save(test::numberedThread(number));
    }
    std::mt19937 random(3);

    int number = firstNumber;
    for (int round = 0; round < rounds; ++round) {
        const QString life = QString::number(1 + random() % maxLifeMicroseconds);
        ChildProcess process(QStringLiteral(CHAT_HISTORY_PROBE), {folder.path(), life});
        const ProcessRun run = process.waitForEnd();
        ASSERT_EQ(run.exitCode, -1) << "it was not killed";
        ASSERT_EQ(run.errors, QByteArray());

        // The last save that it told of, or the one after that.
        const int told = run.output.trimmed().split('\n').last().toInt();
        const QList<PersistedChatThread> left = history.threads();
        ASSERT_GE(told, number);
        number = newestNumber(left);
        ASSERT_TRUE(number == told || number == told + 1) << number << " after " << told;
        ASSERT_TRUE(left == numberedHistory(number)) << "round " << round;
    }

    EXPECT_GT(number, firstNumber) << "every process was killed before its first save";
}

} // namespace
} // namespace vantrel
