#include "updates/Appcast.h"

#include "support/UpdateMaker.h"

#include <gtest/gtest.h>

namespace vantrel {

void PrintTo(const AppcastItem &item, std::ostream *out)
{
    *out << item.version.text().toStdString() << " \"" << item.versionName.toStdString() << "\" \""
         << item.notes.toStdString() << "\" " << item.packageURL.toString().toStdString() << ' '
         << item.packageLength << ' ' << item.packageSignature.toHex().toStdString();
}

namespace test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QStringList systems{u"linux"_s, u"linux-x86_64"_s};
const QByteArray package = "the package";

SampleItem sampleItem()
{
    SampleItem item;
    item.packageURL = QUrl(u"https://updates.test/vantrel.deb"_s);
    item.package = package;
    return item;
}

class AppcastTest : public testing::Test
{
protected:
    [[nodiscard]] std::optional<QList<AppcastItem>> parsed(const QList<SampleItem> &items) const
    {
        return parseAppcast(maker.feed(items), systems);
    }

    /// The only item of a feed that is read.
    [[nodiscard]] AppcastItem onlyItem(const SampleItem &sample) const
    {
        const auto items = parsed({sample});
        EXPECT_TRUE(items && items->size() == 1);
        return items && items->size() == 1 ? items->first() : AppcastItem();
    }

    [[nodiscard]] bool isRefused(const SampleItem &sample) const { return !parsed({sample}); }

    UpdateMaker maker;
};

TEST_F(AppcastTest, ReadsAnItem)
{
    SampleItem sample = sampleItem();
    sample.version = u"0.2.0"_s;
    sample.versionName = u"0.2 (beta)"_s;
    sample.notes = u"* Faster & <calmer>"_s;

    AppcastItem expected;
    expected.version = UpdateVersion{{0, 2}};
    expected.versionName = u"0.2 (beta)"_s;
    expected.notes = u"* Faster & <calmer>"_s;
    expected.packageURL = sample.packageURL;
    expected.packageLength = package.size();
    expected.packageSignature = maker.signature(package);
    EXPECT_EQ(onlyItem(sample), expected);
}

TEST_F(AppcastTest, CallsAVersionByItsNumberWithoutAName)
{
    EXPECT_EQ(onlyItem(sampleItem()).versionName, u"0.2.0"_s);
}

TEST_F(AppcastTest, ReadsAVersionOfTheEnclosure)
{
    const QByteArray feed =
        R"(<rss xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel><item>
           <enclosure url="https://updates.test/v.deb" length="3" s:os="linux" s:version="7"
            s:shortVersionString="0.7" s:edSignature=")" +
        maker.signature("abc").toBase64() + R"("/></item></channel></rss>)";

    const auto items = parseAppcast(feed, systems);

    ASSERT_TRUE(items && items->size() == 1);
    EXPECT_EQ(items->first().version.text(), u"7"_s);
    EXPECT_EQ(items->first().versionName, u"0.7"_s);
}

TEST_F(AppcastTest, TakesNotesInPlainTextAndMarkdownOnly)
{
    SampleItem sample = sampleItem();
    sample.notes = u"What is <b>new</b>"_s;
    for (const QString &format : {u"plain-text"_s, u"markdown"_s}) {
        sample.notesFormat = format;
        EXPECT_EQ(onlyItem(sample).notes, sample.notes) << qPrintable(format);
    }
    for (const QString &format : {u"html"_s, u""_s}) {
        sample.notesFormat = format;
        EXPECT_EQ(onlyItem(sample).notes, QString()) << qPrintable(format);
    }
}

TEST_F(AppcastTest, LeavesOutWhatIsForOtherSystems)
{
    SampleItem mac = sampleItem();
    mac.system.clear();
    SampleItem windows = sampleItem();
    windows.system = u"windows"_s;
    SampleItem otherProcessor = sampleItem();
    otherProcessor.system = u"linux-arm64"_s;
    SampleItem archive = sampleItem();
    archive.packageURL = QUrl(u"https://updates.test/vantrel.tar.gz"_s);
    SampleItem channel = sampleItem();
    channel.channel = u"beta"_s;

    EXPECT_EQ(parsed({mac, windows, otherProcessor, archive, channel}), QList<AppcastItem>());
}

TEST_F(AppcastTest, TakesWhatIsForThisProcessor)
{
    SampleItem sample = sampleItem();
    sample.system = u"linux-x86_64"_s;

    EXPECT_EQ(onlyItem(sample).version.text(), u"0.2"_s);
}

TEST_F(AppcastTest, IgnoresWhatIsWrongWithItemsOfOtherSystems)
{
    SampleItem mac = sampleItem();
    mac.system.clear();
    mac.version = u"1.0 beta"_s;
    mac.length = u"-1"_s;

    EXPECT_EQ(parsed({mac}), QList<AppcastItem>());
}

TEST_F(AppcastTest, KeepsTheOrderOfItsItems)
{
    SampleItem older = sampleItem();
    older.version = u"0.1.9"_s;
    SampleItem newer = sampleItem();
    newer.version = u"0.1.10"_s;

    const auto items = parsed({newer, older});

    ASSERT_TRUE(items && items->size() == 2);
    EXPECT_EQ(items->at(0).version.text(), u"0.1.10"_s);
    EXPECT_EQ(items->at(1).version.text(), u"0.1.9"_s);
}

TEST_F(AppcastTest, WithoutItemsIsEmpty)
{
    EXPECT_EQ(parseAppcast("<rss><channel/></rss>", systems), QList<AppcastItem>());
    EXPECT_EQ(parseAppcast("<rss/>", systems), QList<AppcastItem>());
}

TEST_F(AppcastTest, RefusesAnItemWithoutAVersion)
{
    for (const QString &version :
         {u""_s, u"new"_s, u"1.0b2"_s, u"1..0"_s, u"-1"_s, u"1.0 "_s + u"x"_s, QString(65, u'1')}) {
        SampleItem sample = sampleItem();
        sample.version = version;
        EXPECT_TRUE(isRefused(sample)) << qPrintable(version);
    }
}

TEST_F(AppcastTest, RefusesAPackageThatIsNotHttps)
{
    for (const QString &address : {u"http://updates.test/vantrel.deb"_s, u"vantrel.deb"_s,
                                   u"file:///vantrel.deb"_s, u"/vantrel.deb"_s}) {
        SampleItem sample = sampleItem();
        sample.packageURL = QUrl(address);
        EXPECT_TRUE(isRefused(sample)) << qPrintable(address);
    }
}

TEST_F(AppcastTest, RefusesAPackageWithoutALength)
{
    for (const QString &length :
         {u"0"_s, u"-1"_s, u"many"_s, u"1e3"_s, u"99999999999999999999"_s}) {
        SampleItem sample = sampleItem();
        sample.length = length;
        EXPECT_TRUE(isRefused(sample)) << qPrintable(length);
    }
}

TEST_F(AppcastTest, RefusesAPackageWithoutASignature)
{
    for (const QByteArray &signature :
         {QByteArray("AAAA"), QByteArray("no signature"), QByteArray(63, 's').toBase64()}) {
        SampleItem sample = sampleItem();
        sample.signature = signature;
        EXPECT_TRUE(isRefused(sample)) << signature.constData();
    }
}

TEST_F(AppcastTest, RefusesWhatIsNoFeed)
{
    const QByteArray feed = maker.feed({sampleItem()});
    for (const QByteArray &malformed :
         {QByteArray(), QByteArray("\0\0\0", 3), QByteArray("{}"), QByteArray("<html/>"),
          feed.trimmed().chopped(1), feed.first(feed.size() / 2), feed + "<rss/>",
          QByteArray("<rss><channel><item><description>&undefined;</description></item>"
                     "</channel></rss>"),
          QByteArray("<rss><channel><item><s:version>1</s:version></item></channel></rss>")}) {
        EXPECT_EQ(parseAppcast(malformed, systems), std::nullopt) << malformed.constData();
    }
}

TEST_F(AppcastTest, RefusesADocumentType)
{
    const QByteArray bomb = R"(<?xml version="1.0"?><!DOCTYPE rss [<!ENTITY a "aaaaaaaaaa">
        <!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">]><rss><channel><title>&b;</title></channel></rss>)";

    EXPECT_EQ(parseAppcast(bomb, systems), std::nullopt);
    EXPECT_EQ(parseAppcast("<!DOCTYPE rss SYSTEM \"https://updates.test/rss.dtd\"><rss/>", systems),
              std::nullopt);
}

} // namespace
} // namespace test
} // namespace vantrel
