// An update from the menu to the installer's door, in the application's own window.

#include "app/OrbiskApp.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"
#include "support/TestCertificate.h"
#include "support/UpdateMaker.h"
#include "updates/FeedSoftwareUpdater.h"
#include "views/MainWindow.h"
#include "views/SystemAppearance.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <algorithm>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The window of updates, or null while it is not shown.
QWindow *updateWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto found = std::find_if(windows.cbegin(), windows.cend(), [](const QWindow *window) {
        return window->isVisible() && window->title() == u"Software Update"_s;
    });
    return found == windows.cend() ? nullptr : *found;
}

class UpdateWalk : public testing::Test
{
protected:
    [[nodiscard]] OrbiskApp::Places places() const
    {
        OrbiskApp::Places places;
        places.preferencesFolder = folder.filePath(u"preferences"_s);
        places.keychainService = u"com.orbisk.apikeys.tests"_s;
        places.updatesFolder = folder.filePath(u"updates"_s);
        places.bundleInformation = {
            {u"SUFeedURL"_s, server.url(u"/appcast.xml"_s).toString()},
            {u"SUPublicEDKey"_s, QString::fromLatin1(maker.publicKey().toBase64())}};
        return places;
    }

    [[nodiscard]] OrbiskApp::Desktop desktop()
    {
        OrbiskApp::Desktop desktop;
        desktop.openURL = [this](const QUrl &url) {
            opened.append(url);
            return true;
        };
        return desktop;
    }

    QTemporaryDir folder;
    TestCertificate certificate;
    Trust trust{certificate};
    ScriptedServer server{certificate.serverConfiguration()};
    UpdateMaker maker;
    QList<QUrl> opened;
    OrbiskApp app{places(), desktop()};
    SystemAppearance appearance{app.appearanceController()};
    MainWindow window{app.rootViewModel(), appearance, true};
};

TEST_F(UpdateWalk, EndsAtTheInstallersDoor)
{
    auto *const updater =
        qobject_cast<FeedSoftwareUpdater *>(app.rootViewModel().softwareUpdater());
    ASSERT_NE(updater, nullptr);
    SampleItem item;
    item.version = u"999.0"_s;
    item.package = "the package";
    item.packageURL = server.url(u"/vantrel.deb"_s);
    server.answer(ServerScript().send(httpAnswer(200, maker.signedFeed(maker.feed({item})))));
    server.answer(ServerScript().send(httpAnswer(200, item.package)));

    updater->checkForUpdates();
    spinUntil([] { return updateWindow() != nullptr; });
    spinUntil([&] { return updater->isAvailable(); });
    updater->download();
    spinUntil([&] { return updater->isReady(); });
    updater->openInstaller();

    const QString path = folder.filePath(u"updates/vantrel-999.deb"_s);
    EXPECT_EQ(opened, QList<QUrl>{QUrl::fromLocalFile(path)});
    QFile package(path);
    ASSERT_TRUE(package.open(QIODevice::ReadOnly));
    EXPECT_EQ(package.readAll(), item.package);
}

TEST_F(UpdateWalk, EndsWithItsWindow)
{
    auto *const updater =
        qobject_cast<FeedSoftwareUpdater *>(app.rootViewModel().softwareUpdater());
    ASSERT_NE(updater, nullptr);
    server.answer(ServerScript().hold());
    updater->checkForUpdates();
    spinUntil([this] { return updateWindow() != nullptr && server.holdingCount() == 1; });

    updateWindow()->close();
    spinUntil([this] { return server.openConnectionCount() == 0; });

    EXPECT_EQ(updater->phase(), FeedSoftwareUpdater::Phase::idle);
}

TEST_F(UpdateWalk, BeginsOnlyWhenItIsAskedFor)
{
    spinUntil([this] { return window.window()->isExposed(); });

    EXPECT_EQ(updateWindow(), nullptr);
    EXPECT_EQ(server.connectionCount(), 0u);
}

} // namespace
} // namespace vantrel::test
