#include "app/SoftwareUpdateSetup.h"

#include "platform/http/NetworkHttpLoader.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QStringList loggedLines;

void keepLine(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    loggedLines.append(QString::fromLatin1(context.category) + u": "_s + message);
}

class SoftwareUpdateSetupTest : public testing::Test
{
protected:
    SoftwareUpdateSetupTest() { loggedLines.clear(); }
    ~SoftwareUpdateSetupTest() override { qInstallMessageHandler(former); }

    [[nodiscard]] std::unique_ptr<SoftwareUpdating> launch(const QJsonObject &information)
    {
        return SoftwareUpdateSetup::makeUpdater(information, session, u"unused"_s,
                                                [](const QUrl &) { return true; });
    }

    const QtMessageHandler former = qInstallMessageHandler(keepLine);
    ManualClock clock;
    NetworkHttpLoader session{clock};
};

TEST_F(SoftwareUpdateSetupTest, MakesAnUpdaterOfAValidConfiguration)
{
    const auto updater =
        launch({{u"SUFeedURL"_s, u"https://updates.test/appcast.xml"_s},
                {u"SUPublicEDKey"_s, QString::fromLatin1(QByteArray(32, 'k').toBase64())}});

    ASSERT_TRUE(updater);
    EXPECT_TRUE(updater->canCheckForUpdates());
    EXPECT_EQ(loggedLines, QStringList());
}

TEST_F(SoftwareUpdateSetupTest, SaysInTheLogWhyThereIsNone)
{
    EXPECT_FALSE(launch({{u"SUFeedURL"_s, u"https://updates.test/appcast.xml"_s}}));

    EXPECT_EQ(loggedLines, QStringList{u"com.orbisk.app.SoftwareUpdate: In-app updates disabled: "
                                       "SUPublicEDKey is missing from Info.plist"_s});
}

TEST_F(SoftwareUpdateSetupTest, NamesTheFirstProblemAlone)
{
    EXPECT_FALSE(launch({}));

    EXPECT_EQ(loggedLines, QStringList{u"com.orbisk.app.SoftwareUpdate: In-app updates disabled: "
                                       "SUFeedURL is missing from Info.plist"_s});
}

} // namespace
} // namespace vantrel::test
