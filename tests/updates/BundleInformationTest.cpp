#include "updates/BundleInformation.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The file that this test program finds as an installed application finds its own.
class BundleInformationTest : public testing::Test
{
protected:
    BundleInformationTest() { EXPECT_TRUE(QDir().mkpath(folder)); }
    ~BundleInformationTest() override { QFile::remove(path); }

    void write(const QByteArray &content) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    const QString folder = QCoreApplication::applicationDirPath() + u"/../share/vantrel"_s;
    const QString path = folder + u"/bundle-information.json"_s;
};

TEST_F(BundleInformationTest, IsTheFileBesideTheApplication)
{
    write(R"({"SUFeedURL": "https://updates.test/appcast.xml", "SUPublicEDKey": "key"})");

    EXPECT_EQ(mainBundleInformation(),
              (QJsonObject{{u"SUFeedURL"_s, u"https://updates.test/appcast.xml"_s},
                           {u"SUPublicEDKey"_s, u"key"_s}}));
}

TEST_F(BundleInformationTest, IsEmptyWithoutTheFile)
{
    EXPECT_EQ(mainBundleInformation(), QJsonObject());
}

TEST_F(BundleInformationTest, IsEmptyWhenTheFileIsMalformed)
{
    for (const QByteArray &content :
         {QByteArray(), QByteArray("{"), QByteArray("[1]"), QByteArray("\xff\xfe")}) {
        write(content);
        EXPECT_EQ(mainBundleInformation(), QJsonObject()) << content.constData();
    }
}

} // namespace
} // namespace vantrel::test
