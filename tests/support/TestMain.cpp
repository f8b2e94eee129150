#include "platform/jobs/RunQueue.h"
#include "support/UnexpectedMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>

namespace {

class MessageChecks : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo &) override { vantrel::test::checkExpectedMessages(); }
};

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    vantrel::RunQueue::interfaceThread();
    vantrel::test::installMessageHandler();
    testing::UnitTest::GetInstance()->listeners().Append(new MessageChecks);
    return RUN_ALL_TESTS();
}
