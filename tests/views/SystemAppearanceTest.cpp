#include "views/SystemAppearance.h"

#include "ai/config/SettingsStore.h"
#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTemporaryDir>

namespace vantrel::test {
namespace {

// Without a session bus, as all tests run; the palette of a display-less platform is light.
class SystemAppearanceTest : public testing::Test
{
protected:
    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    SettingsStore settings{defaults};
    AppearanceController controller{settings};
    SystemAppearance appearance{controller};
};

TEST_F(SystemAppearanceTest, FollowsThePaletteWithoutAPortal)
{
    EXPECT_FALSE(appearance.isDark());
    EXPECT_FALSE(appearance.reducesMotion());
}

TEST_F(SystemAppearanceTest, FollowsTheChoiceAtOnce)
{
    const QSignalSpy changes(&appearance, &SystemAppearance::isDarkChanged);

    controller.setAppearance(AppAppearance::dark);
    EXPECT_TRUE(appearance.isDark());

    controller.setAppearance(AppAppearance::light);
    EXPECT_FALSE(appearance.isDark());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(SystemAppearanceTest, IsSilentWhenAChoiceLooksTheSame)
{
    const QSignalSpy changes(&appearance, &SystemAppearance::isDarkChanged);

    controller.setAppearance(AppAppearance::light);

    EXPECT_EQ(changes.count(), 0);
}

} // namespace
} // namespace vantrel::test
