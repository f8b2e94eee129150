// The preferences on disks that are full or read-only, and in a process without descriptors.

#include "platform/UserDefaults.h"
#include "support/FewDescriptors.h"
#include "support/PreferencesOnASmallDisk.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <optional>
#include <thread>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class UserDefaultsOnASmallDisk : public PreferencesOnASmallDisk
{
protected:
    /// What another process would find.
    [[nodiscard]] std::optional<QString> stored(const QString &key) const
    {
        return UserDefaults(folder()).text(key);
    }
};

TEST_F(UserDefaultsOnASmallDisk, AValueThatTheFullDiskHasNoRoomForCountsAndTheOldOneStaysThere)
{
    ASSERT_TRUE(defaults->setText(u"a"_s, u"old"_s));
    disk.fill();
    expectOneMessage(savingFailed + u"No space left on device"_s);

    EXPECT_FALSE(defaults->setText(u"a"_s, u"new"_s));

    EXPECT_EQ(defaults->text(u"a"_s), u"new"_s);
    EXPECT_EQ(defaults->boolean(u"a"_s), std::nullopt);
    EXPECT_EQ(stored(u"a"_s), u"old"_s);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
              QStringList({u"a"_s, u"filling"_s}));
}

TEST_F(UserDefaultsOnASmallDisk, AValueLargerThanTheRoomLeavesNoHalfOfIt)
{
    ASSERT_TRUE(defaults->setText(u"a"_s, u"old"_s));
    expectOneMessage(savingFailed + u"No space left on device"_s);

    EXPECT_FALSE(defaults->setBytes(u"a"_s, QByteArray(100'000, 'x')));

    EXPECT_EQ(stored(u"a"_s), u"old"_s);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a"_s});
    ASSERT_TRUE(defaults->setText(u"a"_s, u"new"_s));
}

TEST_F(UserDefaultsOnASmallDisk, WhatWaitsIsWrittenWithTheNextValueThatCanBe)
{
    disk.fill();
    expectOneMessage(savingFailed);
    ASSERT_FALSE(defaults->setText(u"a"_s, u"1"_s));
    ASSERT_FALSE(defaults->setText(u"b"_s, u"2"_s));
    ASSERT_FALSE(defaults->setText(u"a"_s, u"3"_s));

    disk.makeRoom();
    ASSERT_TRUE(defaults->setText(u"c"_s, u"4"_s));

    EXPECT_EQ(stored(u"a"_s), u"3"_s);
    EXPECT_EQ(stored(u"b"_s), u"2"_s);
    EXPECT_EQ(stored(u"c"_s), u"4"_s);
}

TEST_F(UserDefaultsOnASmallDisk, AValueThatNeverCanBeWrittenHoldsUpNoOther)
{
    ASSERT_TRUE(QDir(folder()).mkdir(u"a"_s));
    disk.fill();
    expectOneMessage(savingFailed);
    ASSERT_FALSE(defaults->setText(u"a"_s, u"1"_s));
    ASSERT_FALSE(defaults->setText(u"b"_s, u"2"_s));

    disk.makeRoom();
    ASSERT_TRUE(defaults->setText(u"c"_s, u"3"_s));

    EXPECT_EQ(stored(u"b"_s), u"2"_s);
}

TEST_F(UserDefaultsOnASmallDisk, OnceItIsWrittenTheFileCounts)
{
    disk.fill();
    expectOneMessage(savingFailed);
    ASSERT_FALSE(defaults->setText(u"a"_s, u"1"_s));
    disk.makeRoom();
    ASSERT_TRUE(defaults->setText(u"b"_s, u"2"_s));

    ASSERT_TRUE(UserDefaults(folder()).setText(u"a"_s, u"of another process"_s));

    EXPECT_EQ(defaults->text(u"a"_s), u"of another process"_s);
}

TEST_F(UserDefaultsOnASmallDisk, WhatStillWaitsIsWrittenAtTheEnd)
{
    disk.fill();
    expectOneMessage(savingFailed);
    ASSERT_FALSE(defaults->setText(u"a"_s, u"1"_s));
    disk.makeRoom();

    defaults.reset();

    EXPECT_EQ(stored(u"a"_s), u"1"_s);
}

TEST_F(UserDefaultsOnASmallDisk, ADiskThatIsFullToTheEndEndsWell)
{
    ASSERT_TRUE(defaults->setText(u"a"_s, u"old"_s));
    disk.fill();
    expectOneMessage(savingFailed);
    ASSERT_FALSE(defaults->setText(u"a"_s, u"new"_s));

    defaults.reset();

    EXPECT_EQ(stored(u"a"_s), u"old"_s);
}

TEST_F(UserDefaultsOnASmallDisk, ASecondTimeIsToldToo)
{
    expectOneMessage(savingFailed);
    disk.fill();
    ASSERT_FALSE(defaults->setText(u"a"_s, u"1"_s));
    disk.makeRoom();
    ASSERT_TRUE(defaults->setText(u"a"_s, u"2"_s));

    expectOneMessage(savingFailed);
    disk.fill();
    EXPECT_FALSE(defaults->setText(u"a"_s, u"3"_s));
}

TEST_F(UserDefaultsOnASmallDisk, CopiesShareWhatWaits)
{
    UserDefaults copy(*defaults);
    disk.fill();
    expectOneMessage(savingFailed);

    ASSERT_FALSE(copy.setText(u"a"_s, u"1"_s));
    ASSERT_FALSE(defaults->setText(u"b"_s, u"2"_s));

    EXPECT_EQ(defaults->text(u"a"_s), u"1"_s);
    EXPECT_EQ(copy.text(u"b"_s), u"2"_s);
}

TEST_F(UserDefaultsOnASmallDisk, AChangeGoesOnFromTheValueThatWaits)
{
    ASSERT_TRUE(defaults->setBytes(u"a"_s, "1"));
    const auto append = [](const QByteArray &old) { return old + '2'; };
    disk.fill();
    expectOneMessage(savingFailed);
    ASSERT_FALSE(defaults->changeBytes(u"a"_s, append));

    disk.makeRoom();
    ASSERT_TRUE(defaults->changeBytes(u"a"_s, append));

    EXPECT_EQ(UserDefaults(folder()).bytes(u"a"_s), "122");
}

TEST_F(UserDefaultsOnASmallDisk, AReadOnlyDiskIsReadAndAValueCountsUntilItCanBeWritten)
{
    ASSERT_TRUE(defaults->setText(u"a"_s, u"old"_s));
    ASSERT_TRUE(defaults->setText(u"b"_s, u"kept"_s));
    disk.setReadOnly(true);
    expectOneMessage(savingFailed + u"Read-only file system"_s);

    ASSERT_FALSE(defaults->setText(u"a"_s, u"new"_s));
    EXPECT_FALSE(defaults->remove(u"b"_s));
    EXPECT_EQ(defaults->text(u"a"_s), u"new"_s);
    EXPECT_EQ(defaults->text(u"b"_s), u"kept"_s);
    EXPECT_EQ(stored(u"a"_s), u"old"_s);

    disk.setReadOnly(false);
    ASSERT_TRUE(defaults->setText(u"c"_s, u"3"_s));
    EXPECT_EQ(stored(u"a"_s), u"new"_s);
}

class UserDefaultsFaults : public testing::Test
{
protected:
    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
};

TEST_F(UserDefaultsFaults, AValueThatNoDescriptorIsLeftForIsWrittenLater)
{
    ASSERT_TRUE(defaults.setText(u"a"_s, u"old"_s));
    expectOneMessage(savingFailed + u"Too many open files"_s);
    {
        const FewDescriptors none(0);
        ASSERT_FALSE(defaults.setText(u"a"_s, u"new"_s));
        EXPECT_EQ(defaults.text(u"a"_s), u"new"_s);
    }
    EXPECT_EQ(UserDefaults(folder.path()).text(u"a"_s), u"old"_s);

    ASSERT_TRUE(defaults.setText(u"b"_s, u"2"_s));

    EXPECT_EQ(UserDefaults(folder.path()).text(u"a"_s), u"new"_s);
}

TEST_F(UserDefaultsFaults, AValueThatCannotBeReadForNowIsNotTakenForNone)
{
    ASSERT_TRUE(defaults.setBytes(u"a"_s, "precious"));
    expectOneMessage(u"a preference could not be read, and stays as it is: Too many open files"_s);
    FewDescriptors none(0);

    // Were it asked, there would be descriptors again by the time that its answer is written.
    const auto changed = defaults.changeBytes(u"a"_s, [&none](const QByteArray &old) {
        none.end();
        return old + "; more";
    });
    none.end();

    EXPECT_FALSE(changed);
    EXPECT_EQ(defaults.bytes(u"a"_s), "precious");
}

TEST_F(UserDefaultsFaults, ChangesOfManyAtOnceAreAllKept)
{
    constexpr int changes = 50;
    const auto change = [this] {
        UserDefaults own(folder.path());
        for (int i = 0; i < changes; ++i) {
            EXPECT_TRUE(own.changeBytes(u"a"_s, [](const QByteArray &old) { return old + 'x'; }));
        }
    };

    std::thread other(change);
    change();
    other.join();

    EXPECT_EQ(defaults.bytes(u"a"_s), QByteArray(qsizetype(2) * changes, 'x'));
}

TEST_F(UserDefaultsFaults, AClockThatWasSetBackRemovesNoFileThatIsBeingWritten)
{
    QFile written(folder.filePath(u".saving-later"_s));
    ASSERT_TRUE(written.open(QIODevice::WriteOnly));
    ASSERT_TRUE(written.setFileTime(QDateTime::currentDateTime().addDays(1),
                                    QFileDevice::FileModificationTime));

    const UserDefaults next(folder.path());

    EXPECT_TRUE(written.exists());
}

} // namespace
} // namespace vantrel::test
