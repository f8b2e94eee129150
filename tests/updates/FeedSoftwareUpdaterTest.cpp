#include "updates/FeedSoftwareUpdater.h"

#include "support/Signal.h"
#include "support/Spin.h"
#include "updates/UpdatesFixture.h"

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Phase = FeedSoftwareUpdater::Phase;

class FeedSoftwareUpdaterTest : public UpdatesTest
{
protected:
    FeedSoftwareUpdaterTest()
    {
        QObject::connect(&updater, &FeedSoftwareUpdater::phaseChanged, &updater,
                         [this] { phases.append(updater.phase()); });
        QObject::connect(&updater, &SoftwareUpdating::canCheckForUpdatesChanged, &updater,
                         [this] { couldCheck.append(updater.canCheckForUpdates()); });
        QObject::connect(&updater, &FeedSoftwareUpdater::windowRequested, &updater,
                         [this] { ++windowRequests; });
    }

    void waitFor(Phase phase)
    {
        spinUntil([&] { return updater.phase() == phase; });
    }

    void check(const QList<SampleItem> &items)
    {
        answer(signedFeed(items));
        updater.checkForUpdates();
        spinUntil([this] { return updater.phase() != Phase::checking; });
    }

    void checkAndDownload()
    {
        check({sampleItem()});
        answer(package);
        updater.download();
        spinUntil([this] { return updater.phase() != Phase::downloading; });
    }

    QList<QUrl> opened;
    bool canOpen = true;
    FeedSoftwareUpdater updater{
        FeedSoftwareUpdater::Services{session, maker.configuration(feedURL()), u"0.1.0"_s,
                                      packageFolder, [this](const QUrl &url) {
                                          opened.append(url);
                                          return canOpen;
                                      }}};
    QList<Phase> phases;
    QList<bool> couldCheck;
    int windowRequests = 0;
};

TEST_F(FeedSoftwareUpdaterTest, DoesNothingByItself)
{
    EXPECT_EQ(updater.phase(), Phase::idle);
    EXPECT_TRUE(updater.canCheckForUpdates());
    EXPECT_EQ(updater.headline(), QString());
    EXPECT_EQ(server.connectionCount(), 0u);
}

TEST_F(FeedSoftwareUpdaterTest, CannotCheckWhileItChecks)
{
    server.answer(ServerScript().hold().send(httpAnswer(200, signedFeed({sampleItem()}))));

    updater.checkForUpdates();
    EXPECT_FALSE(updater.canCheckForUpdates());
    EXPECT_EQ(updater.headline(), u"Checking for updates…"_s);
    spinUntil([this] { return server.holdingCount() == 1; });
    updater.checkForUpdates();
    server.release();
    waitFor(Phase::available);

    EXPECT_EQ(couldCheck, (QList<bool>{false, true}));
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(windowRequests, 2);
}

TEST_F(FeedSoftwareUpdaterTest, SaysThatItIsUpToDate)
{
    check({sampleItem(u"0.1.0"_s)});

    EXPECT_EQ(updater.phase(), Phase::upToDate);
    EXPECT_EQ(updater.headline(), u"Vantrel is up to date"_s);
    EXPECT_EQ(updater.explanation(), u"Version 0.1.0 is the newest."_s);
    EXPECT_EQ(phases, (QList<Phase>{Phase::checking, Phase::upToDate}));
}

TEST_F(FeedSoftwareUpdaterTest, ShowsWhatIsNew)
{
    SampleItem item = sampleItem();
    item.notes = u"* Calmer\n* Faster"_s;

    check({item});

    EXPECT_EQ(updater.headline(), u"Vantrel 0.2.0 is available"_s);
    EXPECT_EQ(updater.explanation(), u"You have version 0.1.0. The download is 250.0 kB."_s);
    EXPECT_EQ(updater.notes(), u"* Calmer\n* Faster"_s);
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(FeedSoftwareUpdaterTest, SaysInOneSentenceWhyACheckFailed)
{
    server.answer(ServerScript().send(httpAnswer(404, {})));

    updater.checkForUpdates();
    waitFor(Phase::failed);

    EXPECT_EQ(updater.headline(), u"Couldn't check for updates"_s);
    EXPECT_EQ(updater.errorMessage(),
              u"The update server had nothing to give (status 404). Try again later."_s);
    EXPECT_TRUE(updater.canCheckForUpdates());
}

TEST_F(FeedSoftwareUpdaterTest, ChecksAgain)
{
    server.answer(ServerScript().send(httpAnswer(404, {})));
    updater.checkForUpdates();
    waitFor(Phase::failed);
    answer(signedFeed({sampleItem()}));

    updater.tryAgain();
    EXPECT_EQ(updater.errorMessage(), QString());
    waitFor(Phase::available);

    EXPECT_EQ(server.requests().size(), 2);
}

TEST_F(FeedSoftwareUpdaterTest, ShowsHowADownloadGoesOn)
{
    check({sampleItem()});
    server.answer(ServerScript()
                      .send(httpHead(200))
                      .send(package.first(62'500))
                      .hold()
                      .send(package.sliced(62'500)));

    updater.download();
    EXPECT_EQ(updater.headline(), u"Downloading Vantrel 0.2.0…"_s);
    EXPECT_EQ(updater.progressText(), u"0 bytes of 250.0 kB"_s);
    EXPECT_FALSE(updater.canCheckForUpdates());
    spinUntil([this] { return updater.progress() == 0.25; });
    EXPECT_EQ(updater.progressText(), u"62.5 kB of 250.0 kB"_s);
    server.release();
    waitFor(Phase::ready);

    EXPECT_EQ(updater.progress(), 1);
    EXPECT_EQ(updater.headline(), u"Vantrel 0.2.0 is ready to install"_s);
}

TEST_F(FeedSoftwareUpdaterTest, HandsThePackageToTheSystemsInstaller)
{
    checkAndDownload();
    ASSERT_EQ(updater.phase(), Phase::ready);
    EXPECT_EQ(opened, QList<QUrl>()) << "before the person asked for it";

    updater.openInstaller();
    updater.showInFolder();

    EXPECT_EQ(opened, (QList<QUrl>{QUrl::fromLocalFile(packageFolder + u"/vantrel-0.2.deb"_s),
                                   QUrl::fromLocalFile(packageFolder)}));
    EXPECT_EQ(updater.errorMessage(), QString());
}

TEST_F(FeedSoftwareUpdaterTest, SaysWhereThePackageIsWhenNothingOpensIt)
{
    checkAndDownload();
    canOpen = false;

    updater.openInstaller();

    EXPECT_EQ(updater.phase(), Phase::ready);
    EXPECT_EQ(updater.errorMessage(), u"Couldn't open your system's installer. The package is "_s +
                                          packageFolder + u"/vantrel-0.2.deb"_s);
}

TEST_F(FeedSoftwareUpdaterTest, SaysInOneSentenceWhyADownloadFailed)
{
    check({sampleItem()});
    answer(package.chopped(1) + 'X');

    updater.download();
    waitFor(Phase::failed);

    EXPECT_EQ(updater.headline(), u"Couldn't download the update"_s);
    EXPECT_EQ(updater.errorMessage(),
              u"The download isn't signed by the makers of Vantrel, so it was deleted."_s);
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(FeedSoftwareUpdaterTest, DownloadsAgain)
{
    check({sampleItem()});
    server.answer(ServerScript().reset());
    updater.download();
    waitFor(Phase::failed);
    answer(package);

    updater.tryAgain();
    waitFor(Phase::ready);

    EXPECT_EQ(askedFor(), (QList<QByteArray>{"/appcast.xml", "/vantrel.deb", "/vantrel.deb"}));
}

TEST_F(FeedSoftwareUpdaterTest, StopsACheckWhenItsWindowGoes)
{
    server.answer(ServerScript().hold());
    updater.checkForUpdates();
    spinUntil([this] { return server.holdingCount() == 1; });

    updater.dismiss();
    spinUntil([this] { return server.openConnectionCount() == 0; });

    EXPECT_EQ(updater.phase(), Phase::idle);
    EXPECT_TRUE(updater.canCheckForUpdates());
}

TEST_F(FeedSoftwareUpdaterTest, StopsADownloadWhenItsWindowGoes)
{
    check({sampleItem()});
    server.answer(ServerScript().send(httpHead(200)).send(package.first(1'000)).hold());
    updater.download();
    spinUntil([this] { return updater.progress() > 0; });

    updater.dismiss();
    spinUntil([this] { return server.openConnectionCount() == 0; });

    EXPECT_EQ(updater.phase(), Phase::idle);
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(FeedSoftwareUpdaterTest, DownloadsOnlyWhatItOffers)
{
    updater.download();
    check({sampleItem(u"0.1.0"_s)});
    updater.download();
    updater.openInstaller();
    updater.tryAgain();

    EXPECT_EQ(updater.phase(), Phase::upToDate);
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(opened, QList<QUrl>());
}

TEST_F(FeedSoftwareUpdaterTest, KeepsAPackageWhenItsWindowGoes)
{
    checkAndDownload();

    updater.dismiss();

    EXPECT_EQ(updater.phase(), Phase::idle);
    EXPECT_EQ(keptFiles(), QStringList{u"vantrel-0.2.deb"_s});
}

} // namespace
} // namespace vantrel::test
