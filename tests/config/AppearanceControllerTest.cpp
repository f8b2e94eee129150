#include "ai/config/AppearanceController.h"

#include "ai/config/SettingsStore.h"
#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QList>
#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

class FakeSettingsStore final : public SettingsStoring
{
public:
    [[nodiscard]] AIProviderConfig loadAIConfig() const override { return {}; }
    void saveAIConfig(const AIProviderConfig &) override { ADD_FAILURE() << "saved a config"; }
    [[nodiscard]] AppAppearance loadAppearance() const override { return stored; }
    void saveAppearance(AppAppearance appearance) override { saved.append(appearance); }

    AppAppearance stored = AppAppearance::system;
    QList<AppAppearance> saved{};
};

void countChanges(AppearanceController &controller, int &changes)
{
    QObject::connect(&controller, &AppearanceController::appearanceChanged, &controller,
                     [&changes] { ++changes; });
}

TEST(AppearanceController, LoadsTheStoredAppearance)
{
    FakeSettingsStore store;
    store.stored = AppAppearance::dark;

    const AppearanceController controller(store);

    EXPECT_EQ(controller.appearance(), AppAppearance::dark);
    EXPECT_EQ(store.saved, QList<AppAppearance>());
}

TEST(AppearanceController, StoresAndAnnouncesANewAppearanceAtOnce)
{
    FakeSettingsStore store;
    AppearanceController controller(store);
    int changes = 0;
    countChanges(controller, changes);

    controller.setAppearance(AppAppearance::light);

    EXPECT_EQ(controller.appearance(), AppAppearance::light);
    EXPECT_EQ(store.saved, QList{AppAppearance::light});
    EXPECT_EQ(changes, 1);
}

TEST(AppearanceController, NeitherStoresNorAnnouncesTheCurrentAppearance)
{
    FakeSettingsStore store;
    store.stored = AppAppearance::dark;
    AppearanceController controller(store);
    int changes = 0;
    countChanges(controller, changes);

    controller.setAppearance(AppAppearance::dark);

    EXPECT_EQ(store.saved, QList<AppAppearance>());
    EXPECT_EQ(changes, 0);
}

TEST(AppearanceController, LeavesThePreferencesUntouchedForTheCurrentAppearance)
{
    const QTemporaryDir folder;
    UserDefaults defaults(folder.path());
    SettingsStore store(defaults);
    AppearanceController controller(store);

    controller.setAppearance(AppAppearance::system);

    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST(AppearanceController, HasStoredTheAppearanceWhenItAnnouncesIt)
{
    FakeSettingsStore store;
    AppearanceController controller(store);
    QList<AppAppearance> savedAtAnnouncement;
    QObject::connect(&controller, &AppearanceController::appearanceChanged, &controller,
                     [&] { savedAtAnnouncement = store.saved; });

    controller.setAppearance(AppAppearance::dark);

    EXPECT_EQ(savedAtAnnouncement, QList{AppAppearance::dark});
}

TEST(AppearanceController, KeepsTheAppearanceForTheNextLaunch)
{
    const QTemporaryDir folder;
    UserDefaults defaults(folder.path());
    SettingsStore store(defaults);
    AppearanceController(store).setAppearance(AppAppearance::dark);

    const AppearanceController next(store);

    EXPECT_EQ(next.appearance(), AppAppearance::dark);
    EXPECT_EQ(defaults.text(u"appAppearance"_s), u"dark"_s);
}

} // namespace
} // namespace vantrel
