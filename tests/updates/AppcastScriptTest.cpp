#include "support/ProcessRun.h"
#include "updates/Appcast.h"
#include "updates/EdDSASignature.h"
#include "updates/SignedFeed.h"
#include "updates/StrictBase64.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString script = QStringLiteral(VANTREL_SOURCE_FOLDER "/script/appcast");

/// The program with which a release is made, in a folder of its own.
class AppcastScriptTest : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    [[nodiscard]] QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        return file.readAll();
    }

    [[nodiscard]] ProcessRun add(const QString &version, const QString &url) const
    {
        return run(script, {u"add"_s, path(u"appcast.xml"_s), u"--key"_s, path(u"key.pem"_s),
                            u"--version"_s, version, u"--package"_s, path(u"vantrel.deb"_s),
                            u"--url"_s, url, u"--notes"_s, path(u"notes.md"_s)});
    }

    QTemporaryDir folder;
};

TEST_F(AppcastScriptTest, MakesWhatTheApplicationAccepts)
{
    const QByteArray package("\x7f\0\xff a package", 13);
    write(u"vantrel.deb"_s, package);
    write(u"notes.md"_s, "* Über & <unter>\n");
    const ProcessRun key = run(script, {u"new-key"_s, path(u"key.pem"_s)});
    ASSERT_EQ(key.exitCode, 0) << key.errors.constData();

    for (const QString &version : {u"0.2.0"_s, u"0.3.0"_s}) {
        const ProcessRun added =
            add(version, u"https://updates.test/vantrel-"_s + version + u".deb"_s);
        ASSERT_EQ(added.exitCode, 0) << added.errors.constData();
    }

    const auto publicKey = decodeStrictBase64(key.output.trimmed());
    ASSERT_TRUE(publicKey);
    const auto feed = verifiedFeedContent(content(u"appcast.xml"_s), *publicKey);
    ASSERT_TRUE(feed);
    const auto items = parseAppcast(*feed, {u"linux-x86_64"_s});
    ASSERT_TRUE(items && items->size() == 2);
    EXPECT_EQ(items->at(0).version.text(), u"0.3"_s);
    EXPECT_EQ(items->at(1).version.text(), u"0.2"_s);
    EXPECT_EQ(items->at(0).notes, u"* Über & <unter>"_s);
    EXPECT_EQ(items->at(0).packageURL, QUrl(u"https://updates.test/vantrel-0.3.0.deb"_s));
    EXPECT_EQ(items->at(0).packageLength, package.size());
    EXPECT_TRUE(isSignedWithEd25519(*publicKey, items->at(0).packageSignature, package));
}

TEST_F(AppcastScriptTest, KeepsAKeyForItsOwnerAndNeverReplacesOne)
{
    const ProcessRun first = run(script, {u"new-key"_s, path(u"key.pem"_s)});
    const QByteArray key = content(u"key.pem"_s);

    const ProcessRun second = run(script, {u"new-key"_s, path(u"key.pem"_s)});

    EXPECT_EQ(second.exitCode, 1);
    EXPECT_EQ(content(u"key.pem"_s), key);
    EXPECT_EQ(QFileInfo(path(u"key.pem"_s)).permissions(),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
    EXPECT_EQ(run(script, {u"public-key"_s, path(u"key.pem"_s)}).output, first.output);
}

TEST_F(AppcastScriptTest, RefusesAnAddressThatIsNotHttps)
{
    write(u"vantrel.deb"_s, "package");
    write(u"notes.md"_s, "notes");
    ASSERT_EQ(run(script, {u"new-key"_s, path(u"key.pem"_s)}).exitCode, 0);

    const ProcessRun added = add(u"0.2.0"_s, u"http://updates.test/vantrel.deb"_s);

    EXPECT_EQ(added.exitCode, 1);
    EXPECT_EQ(added.errors, "script/appcast: the package's address must be https\n");
    EXPECT_FALSE(QFileInfo::exists(path(u"appcast.xml"_s)));
}

} // namespace
} // namespace vantrel::test
