#include "persistence/KeySavingNotice.h"

#include "platform/UserDefaults.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(KeySavingNotice, IsRecordedForGood)
{
    const QTemporaryDir folder;
    UserDefaults defaults(folder.path());
    EXPECT_FALSE(hasShownKeySavingNotice(defaults));

    recordShownKeySavingNotice(defaults);

    EXPECT_TRUE(hasShownKeySavingNotice(defaults));
    EXPECT_EQ(UserDefaults(folder.path()).boolean(u"settings.hasShownKeychainNotice"_s), true);
}

TEST(KeySavingNotice, ARecordThatCannotBeSavedIsLoggedAndCountsUntilTheEnd)
{
    const QTemporaryDir folder;
    QFile inTheWay(folder.filePath(u"file"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    UserDefaults defaults(inTheWay.fileName());
    test::expectOneMessage(
        u"the preferences could not be saved, and are kept until they can be: "_s);

    recordShownKeySavingNotice(defaults);

    EXPECT_TRUE(hasShownKeySavingNotice(defaults));
}

} // namespace
} // namespace vantrel
