#include "platform/jobs/RunQueue.h"
#include "support/UnexpectedMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>

Q_IMPORT_QML_PLUGIN(VantrelPlugin)

namespace {

class MessageChecks : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo &) override { vantrel::test::checkExpectedMessages(); }
};

} // namespace

// Of its own, since fonts and pictures need an application with a window system.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    const QGuiApplication application(argc, argv);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    vantrel::RunQueue::interfaceThread();
    vantrel::test::installMessageHandler();
    testing::UnitTest::GetInstance()->listeners().Append(new MessageChecks);
    return RUN_ALL_TESTS();
}
