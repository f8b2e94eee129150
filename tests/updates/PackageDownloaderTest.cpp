#include "updates/PackageDownloader.h"

#include "support/Running.h"
#include "support/Spin.h"
#include "updates/UpdatesFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Case = SoftwareUpdateError::Case;
using Outcome = Result<QString, SoftwareUpdateError>;
using Downloading = Running<Outcome>;

class PackageDownloaderTest : public UpdatesTest
{
protected:
    [[nodiscard]] AppcastItem item() const
    {
        AppcastItem item;
        item.version = UpdateVersion{{0, 2}};
        item.versionName = u"0.2 ../../evil"_s;
        item.packageURL = server.url(u"/vantrel.deb"_s);
        item.packageLength = package.size();
        item.packageSignature = maker.signature(package);
        return item;
    }

    [[nodiscard]] Downloading begin(const AppcastItem &of)
    {
        return Downloading(downloader.download(
            of, [this](std::int64_t receivedBytes) { received.append(receivedBytes); }));
    }

    [[nodiscard]] Outcome download(const AppcastItem &of)
    {
        const Downloading downloading = begin(of);
        spinUntil([&] { return downloading.isOver(); });
        return downloading.value().value_or(Outcome());
    }

    [[nodiscard]] SoftwareUpdateError downloadError(const AppcastItem &of)
    {
        const Outcome outcome = download(of);
        EXPECT_FALSE(outcome) << qPrintable(outcome.value_or(QString()));
        return outcome ? SoftwareUpdateError() : outcome.error();
    }

    PackageDownloader downloader{session, packageFolder, maker.publicKey()};
    QList<std::int64_t> received;
};

TEST_F(PackageDownloaderTest, KeepsASignedPackage)
{
    answer(package);

    const Outcome path = download(item());

    ASSERT_EQ(path, Outcome(packageFolder + u"/vantrel-0.2.deb"_s));
    EXPECT_EQ(keptFiles(), QStringList{u"vantrel-0.2.deb"_s});
    QFile kept(*path);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), package);
}

TEST_F(PackageDownloaderTest, KeepsItForThePersonAloneAndNotAsAProgram)
{
    answer(package);

    const Outcome path = download(item());

    ASSERT_TRUE(path);
    const auto owner = QFile::ReadOwner | QFile::WriteOwner;
    const auto user = QFile::ReadUser | QFile::WriteUser;
    EXPECT_EQ(QFileInfo(*path).permissions(), owner | user);
    EXPECT_EQ(QFileInfo(packageFolder).permissions(),
              owner | user | QFile::ExeOwner | QFile::ExeUser);
}

TEST_F(PackageDownloaderTest, TellsHowMuchHasCome)
{
    server.answer(
        ServerScript()
            .send(httpHead(200, "Content-Length: " + QByteArray::number(package.size()) + "\r\n"))
            .send(package.first(1'000))
            .hold()
            .send(package.sliced(1'000)));
    const Downloading downloading = begin(item());
    spinUntil([this] { return !received.isEmpty() && received.last() == 1'000; });

    server.release();
    spinUntil([&] { return downloading.isOver(); });

    EXPECT_EQ(received.last(), package.size());
    EXPECT_TRUE(std::is_sorted(received.cbegin(), received.cend()));
}

TEST_F(PackageDownloaderTest, DeletesWhatIsNotSigned)
{
    QByteArray changed = package;
    changed[changed.size() / 2] = 'X';
    answer(changed);

    EXPECT_EQ(downloadError(item()), (SoftwareUpdateError{Case::packageNotSigned, {}, 0}));
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(PackageDownloaderTest, DeletesWhatSomebodyElseSigned)
{
    const UpdateMaker somebodyElse;
    AppcastItem forged = item();
    forged.packageSignature = somebodyElse.signature(package);
    answer(package);

    EXPECT_EQ(downloadError(forged), (SoftwareUpdateError{Case::packageNotSigned, {}, 0}));
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(PackageDownloaderTest, DeletesWhatIsTooShort)
{
    answer(package.chopped(1));

    EXPECT_EQ(downloadError(item()), (SoftwareUpdateError{Case::packageOfOtherLength, {}, 0}));
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(PackageDownloaderTest, StopsAtTheAnnouncedLength)
{
    server.answer(ServerScript().send(httpHead(200)).sendRepeatedly(package, 1'000));

    EXPECT_EQ(downloadError(item()), (SoftwareUpdateError{Case::packageOfOtherLength, {}, 0}));
    spinUntil([this] { return server.openConnectionCount() == 0; });
    EXPECT_LT(server.sentBytes(), 100 * package.size());
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(PackageDownloaderTest, DeletesWhatBrokeOff)
{
    server.answer(ServerScript().send(httpAnswer(200, package).chopped(1)).reset());

    EXPECT_EQ(downloadError(item()).kind, Case::unreachable);
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(PackageDownloaderTest, AServerThatLeavesInTheHandshakeIsUnreachable)
{
    QTcpServer leaving;
    ASSERT_TRUE(leaving.listen(QHostAddress::LocalHost));
    QObject::connect(&leaving, &QTcpServer::newConnection, [&leaving] {
        QTcpSocket *const peer = leaving.nextPendingConnection();
        QObject::connect(peer, &QTcpSocket::readyRead, peer, &QTcpSocket::abort);
    });
    AppcastItem elsewhere = item();
    elsewhere.packageURL = QUrl(u"https://127.0.0.1:%1/vantrel.deb"_s.arg(leaving.serverPort()));

    const SoftwareUpdateError error = downloadError(elsewhere);

    EXPECT_EQ(error.kind, Case::unreachable);
    EXPECT_NE(error.detail, QString());
    EXPECT_EQ(keptFiles(), QStringList());
}

TEST_F(PackageDownloaderTest, DoesNotFollowToHttp)
{
    ScriptedServer insecure;
    redirect(insecure.url(u"/vantrel.deb"_s).toEncoded());

    EXPECT_EQ(downloadError(item()), (SoftwareUpdateError{Case::insecureRedirect, {}, 0}));
    EXPECT_EQ(insecure.connectionCount(), 0u);
}

TEST_F(PackageDownloaderTest, SaysThatThePackageIsMissing)
{
    server.answer(ServerScript().send(httpAnswer(404, "no such package")));

    EXPECT_EQ(downloadError(item()), (SoftwareUpdateError{Case::refused, {}, 404}));
}

TEST_F(PackageDownloaderTest, LeavesNothingWhenNobodyWaits)
{
    server.answer(ServerScript().send(httpHead(200)).send(package.first(1'000)).hold());
    Downloading downloading = begin(item());
    spinUntil([this] { return !received.isEmpty(); });

    downloading.cancel();
    spinUntil([this] { return server.openConnectionCount() == 0; });

    EXPECT_EQ(keptFiles(), QStringList());
    EXPECT_FALSE(downloading.isOver());
}

TEST_F(PackageDownloaderTest, ReplacesWhatEarlierDownloadsLeft)
{
    ASSERT_TRUE(QDir().mkpath(packageFolder));
    for (const QString &name :
         {u"vantrel-0.1.deb"_s, u"vantrel-0.2.deb"_s, u".left-by-a-crash"_s}) {
        QFile left(packageFolder + u'/' + name);
        ASSERT_TRUE(left.open(QIODevice::WriteOnly));
        left.write("old");
    }
    answer(package);

    EXPECT_TRUE(download(item()));

    EXPECT_EQ(keptFiles(), QStringList{u"vantrel-0.2.deb"_s});
    EXPECT_EQ(QFileInfo(packageFolder + u"/vantrel-0.2.deb"_s).size(), package.size());
}

TEST_F(PackageDownloaderTest, SaysWhyItCannotBeKept)
{
    QFile inTheWay(home.filePath(u"cache"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    server.answer(ServerScript().send(httpHead(200)).send(package));

    EXPECT_EQ(
        downloadError(item()),
        (SoftwareUpdateError{Case::packageNotKept, u"The folder for updates can't be made"_s, 0}));
}

TEST_F(PackageDownloaderTest, DoesNotEmptyAFolderBehindALink)
{
    const QString precious = home.filePath(u"precious"_s);
    ASSERT_TRUE(QDir().mkpath(precious));
    QFile file(precious + u"/work.txt"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QDir().mkpath(home.filePath(u"cache"_s)));
    ASSERT_TRUE(QFile::link(precious, packageFolder));
    server.answer(ServerScript().send(httpHead(200)).send(package));

    EXPECT_EQ(downloadError(item()).kind, Case::packageNotKept);
    EXPECT_TRUE(file.exists());
}

} // namespace
} // namespace vantrel::test
