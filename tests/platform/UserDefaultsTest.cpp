#include "platform/UserDefaults.h"

#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <thread>
#include <unistd.h>
#include <vector>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class UserDefaultsTest : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString &name) const { return folder() + u'/' + name; }
    [[nodiscard]] QString folder() const { return m_folder.filePath(u"preferences"_s); }

    void writeFile(const QString &name, const QByteArray &content)
    {
        QDir().mkpath(folder());
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    [[nodiscard]] QStringList files() const
    {
        return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir m_folder{};
    UserDefaults defaults{folder()};
};

TEST_F(UserDefaultsTest, HoldsNothingAtFirstAndMakesNoFolder)
{
    EXPECT_EQ(defaults.text(u"a"_s), std::nullopt);
    EXPECT_EQ(defaults.boolean(u"a"_s), std::nullopt);
    EXPECT_EQ(defaults.bytes(u"a"_s), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(folder()));
}

TEST_F(UserDefaultsTest, GivesBackWhatWasSet)
{
    const QByteArray bytes("\0\n\xff", 3);

    ASSERT_TRUE(defaults.setText(u"text"_s, u"Größe\n"_s));
    ASSERT_TRUE(defaults.setBoolean(u"yes"_s, true));
    ASSERT_TRUE(defaults.setBoolean(u"no"_s, false));
    ASSERT_TRUE(defaults.setBytes(u"bytes"_s, bytes));
    ASSERT_TRUE(defaults.setText(u"empty"_s, QString()));

    const UserDefaults later(folder());
    EXPECT_EQ(later.text(u"text"_s), u"Größe\n"_s);
    EXPECT_EQ(later.boolean(u"yes"_s), true);
    EXPECT_EQ(later.boolean(u"no"_s), false);
    EXPECT_EQ(later.bytes(u"bytes"_s), bytes);
    EXPECT_EQ(later.text(u"empty"_s), u""_s);
}

TEST_F(UserDefaultsTest, ATextKeepsItsByteOrderMarks)
{
    ASSERT_TRUE(defaults.setText(u"a"_s, u"\uFEFF\uFEFFa"_s));

    EXPECT_EQ(defaults.text(u"a"_s), u"\uFEFF\uFEFFa"_s);
}

TEST_F(UserDefaultsTest, ReplacesWhateverTheKeyHeld)
{
    ASSERT_TRUE(defaults.setText(u"a"_s, u"one"_s));
    ASSERT_TRUE(defaults.setBoolean(u"a"_s, true));

    EXPECT_EQ(defaults.text(u"a"_s), std::nullopt);
    EXPECT_EQ(defaults.boolean(u"a"_s), true);
    EXPECT_EQ(files().size(), 1);
}

TEST_F(UserDefaultsTest, RemovesAKey)
{
    ASSERT_TRUE(defaults.setText(u"a"_s, u"one"_s));

    EXPECT_TRUE(defaults.remove(u"a"_s));
    EXPECT_TRUE(defaults.remove(u"a"_s));

    EXPECT_EQ(defaults.text(u"a"_s), std::nullopt);
}

TEST_F(UserDefaultsTest, KeysOfAnyCharactersStayInTheFolderAndApart)
{
    ASSERT_TRUE(defaults.setText(u"../outside"_s, u"1"_s));
    ASSERT_TRUE(defaults.setText(u"a/b"_s, u"2"_s));
    ASSERT_TRUE(defaults.setText(u"a%2Fb"_s, u"3"_s));

    EXPECT_EQ(defaults.text(u"../outside"_s), u"1"_s);
    EXPECT_EQ(defaults.text(u"a/b"_s), u"2"_s);
    EXPECT_EQ(defaults.text(u"a%2Fb"_s), u"3"_s);
    EXPECT_EQ(files().size(), 3);
}

TEST_F(UserDefaultsTest, EverythingIsReadableByItsOwnerAlone)
{
    ASSERT_TRUE(defaults.setText(u"a"_s, u"one"_s));

    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                            QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(folder()) & others);
    EXPECT_FALSE(QFile::permissions(path(u"a"_s)) & others);
}

TEST_F(UserDefaultsTest, ADamagedFileReadsAsNothingAndStaysUntilTheNextWrite)
{
    for (const QByteArray &damaged : {QByteArray(), QByteArray("text"), QByteArray("number\n1"),
                                      QByteArray("text\n\xff\xfe")}) {
        writeFile(u"a"_s, damaged);

        EXPECT_EQ(defaults.text(u"a"_s), std::nullopt) << damaged.toStdString();

        EXPECT_EQ(QFileInfo(path(u"a"_s)).size(), damaged.size());
    }
    writeFile(u"flag"_s, "boolean\nmaybe");
    EXPECT_EQ(defaults.boolean(u"flag"_s), std::nullopt);

    ASSERT_TRUE(defaults.setText(u"a"_s, u"whole"_s));
    EXPECT_EQ(defaults.text(u"a"_s), u"whole"_s);
}

TEST_F(UserDefaultsTest, AFolderInThePlaceOfAFileReadsAsNothing)
{
    ASSERT_TRUE(QDir().mkpath(path(u"a"_s)));

    EXPECT_EQ(defaults.text(u"a"_s), std::nullopt);
    expectOneMessage(u"the preferences could not be saved, and are kept until they can be: "_s);
    EXPECT_FALSE(defaults.setText(u"a"_s, u"one"_s));
}

TEST_F(UserDefaultsTest, AWriteThatFailsKeepsTheFileAndLeavesNothingBehind)
{
    if (::geteuid() == 0) {
        GTEST_SKIP() << "the superuser may write everywhere";
    }
    ASSERT_TRUE(defaults.setText(u"a"_s, u"one"_s));
    QFile::setPermissions(folder(), QFile::ReadOwner | QFile::ExeOwner);

    expectOneMessage(u"the preferences could not be saved, and are kept until they can be: "_s);
    const auto written = defaults.setText(u"a"_s, u"two"_s);

    EXPECT_EQ(UserDefaults(folder()).text(u"a"_s), u"one"_s);
    QFile::setPermissions(folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_FALSE(written);
    EXPECT_EQ(files(), QStringList{u"a"_s});
}

TEST_F(UserDefaultsTest, AFolderThatCannotBeMadeIsTold)
{
    QFile file(folder()); // Where the folder would be.
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    expectOneMessage(u"The folder "_s + folder());

    const auto written = defaults.setText(u"a"_s, u"one"_s);

    ASSERT_FALSE(written);
    EXPECT_TRUE(written.error().message.contains(folder()));
}

TEST_F(UserDefaultsTest, WhatAKilledProcessLeftIsRemovedOnceItIsOld)
{
    writeFile(u".saving-old"_s, "text\nhal");
    writeFile(u".saving-new"_s, "text\nhal");
    {
        QFile old(path(u".saving-old"_s));
        ASSERT_TRUE(old.open(QIODevice::ReadWrite));
        ASSERT_TRUE(old.setFileTime(QDateTime::currentDateTime().addSecs(-120),
                                    QFileDevice::FileModificationTime));
    }

    const UserDefaults later(folder());

    EXPECT_EQ(files(), QStringList{u".saving-new"_s});
}

TEST_F(UserDefaultsTest, ReadersOnOtherThreadsSeeOneValueOrTheNext)
{
    const QByteArray one(4096, '1');
    const QByteArray two(8192, '2');
    ASSERT_TRUE(defaults.setBytes(u"a"_s, one));
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 2; ++reader) {
        readers.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                const auto read = defaults.bytes(u"a"_s);
                EXPECT_TRUE(read == one || read == two);
            }
        });
    }
    for (int round = 0; round < 50; ++round) {
        EXPECT_TRUE(defaults.setBytes(u"a"_s, round % 2 == 0 ? two : one));
    }
    for (std::thread &reader : readers) {
        reader.join();
    }
}

} // namespace
} // namespace vantrel::test
