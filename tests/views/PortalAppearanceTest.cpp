// A desktop that announces its appearance, on a session bus of the test's own.

#include "views/SystemAppearance.h"

#include "ai/config/SettingsStore.h"
#include "platform/UserDefaults.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

/// The settings part of a desktop portal.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal(uint colorScheme, bool enablesAnimations)
        : m_colorScheme(colorScheme)
        , m_enablesAnimations(enablesAnimations)
    {
        EXPECT_TRUE(m_bus.registerObject(u"/org/freedesktop/portal/desktop"_s, this,
                                         QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_bus.registerService(u"org.freedesktop.portal.Desktop"_s));
    }
    FakePortal(const FakePortal &) = delete;
    FakePortal &operator=(const FakePortal &) = delete;
    ~FakePortal() override { QDBusConnection::disconnectFromBus(u"portal"_s); }

    void announce(const QString &group, const QString &key, const QVariant &value)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                       u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(signal);
    }

    void announceColorScheme(uint scheme)
    {
        announce(u"org.freedesktop.appearance"_s, u"color-scheme"_s, scheme);
    }

    [[nodiscard]] int questionCount() const { return m_questionCount; }

public Q_SLOTS:
    /// The method's answer is a variant in a variant, as portals give it.
    QDBusVariant Read(const QString &group, const QString &)
    {
        ++m_questionCount;
        const QVariant value = group == "org.freedesktop.appearance"_L1
                                   ? QVariant(m_colorScheme)
                                   : QVariant(m_enablesAnimations);
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }

private:
    uint m_colorScheme;
    bool m_enablesAnimations;
    int m_questionCount = 0;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"portal"_s);
};

namespace {

constexpr uint noPreference = 0;
constexpr uint dark = 1;
constexpr uint light = 2;

class PortalAppearance : public testing::Test
{
protected:
    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    SettingsStore settings{defaults};
    AppearanceController controller{settings};
};

TEST_F(PortalAppearance, AsksTheDesktopAtTheStart)
{
    const FakePortal portal(dark, false);

    const SystemAppearance appearance(controller);
    spinUntil([&] { return appearance.isDark() && appearance.reducesMotion(); });

    EXPECT_EQ(portal.questionCount(), 2);
}

TEST_F(PortalAppearance, FollowsTheDesktopWhileItRuns)
{
    FakePortal portal(light, true);
    const SystemAppearance appearance(controller);
    spinUntil([&] { return portal.questionCount() == 2; });
    const QSignalSpy changes(&appearance, &SystemAppearance::isDarkChanged);

    portal.announceColorScheme(dark);
    spinUntil([&] { return appearance.isDark(); });
    portal.announceColorScheme(noPreference);
    spinUntil([&] { return !appearance.isDark(); });
    portal.announce(u"org.gnome.desktop.interface"_s, u"enable-animations"_s, false);
    spinUntil([&] { return appearance.reducesMotion(); });

    EXPECT_EQ(changes.count(), 2);
}

TEST_F(PortalAppearance, AChosenAppearanceStandsAgainstTheDesktop)
{
    FakePortal portal(light, true);
    const SystemAppearance appearance(controller);
    spinUntil([&] { return portal.questionCount() == 2; });

    controller.setAppearance(AppAppearance::light);
    portal.announceColorScheme(dark);
    // What comes after it has been heard, so the scheme has been too.
    portal.announce(u"org.gnome.desktop.interface"_s, u"enable-animations"_s, false);
    spinUntil([&] { return appearance.reducesMotion(); });
    EXPECT_FALSE(appearance.isDark());

    controller.setAppearance(AppAppearance::system);
    EXPECT_TRUE(appearance.isDark());
}

} // namespace
} // namespace vantrel::test

#include "PortalAppearanceTest.moc"
