#include "views/SystemAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString interfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString animationsKey = QStringLiteral("enable-animations");
constexpr uint prefersDark = 1; // The portal's numbers: 0 no preference, 1 dark, 2 light.
constexpr uint prefersLight = 2;
constexpr int portalTimeoutMs = 2000;

bool isPaletteDark()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

} // namespace

SystemAppearance::SystemAppearance(AppearanceController &controller, QObject *parent)
    : QObject(parent)
    , m_controller(controller)
    , m_isSystemDark(isPaletteDark())
{
    connect(&controller, &AppearanceController::appearanceChanged, this, &SystemAppearance::update);
    update();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        bus.connect(portalService, portalPath, portalInterface, u"SettingChanged"_s, this,
                    SLOT(portalSettingChanged(QDBusMessage)));
        askPortal(appearanceGroup, colorSchemeKey);
        askPortal(interfaceGroup, animationsKey);
    }
}

void SystemAppearance::portalSettingChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 3) {
        takeSetting(arguments.at(0).toString(), arguments.at(1).toString(), arguments.at(2));
    }
}

void SystemAppearance::askPortal(const QString &group, const QString &key)
{
    auto question =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, u"Read"_s);
    question << group << key;
    auto *const watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(question, portalTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, group, key] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) {
            takeSetting(group, key, reply.value().variant());
        }
    });
}

void SystemAppearance::takeSetting(const QString &group, const QString &key, const QVariant &value)
{
    QVariant plain = value;
    while (plain.metaType() == QMetaType::fromType<QDBusVariant>()) {
        plain = plain.value<QDBusVariant>().variant();
    }
    if (group == appearanceGroup && key == colorSchemeKey) {
        const uint scheme = plain.toUInt();
        m_isSystemDark = scheme == prefersDark || (scheme != prefersLight && isPaletteDark());
        update();
    } else if (group == interfaceGroup && key == animationsKey) {
        const bool reducesMotion = !plain.toBool();
        if (reducesMotion != m_reducesMotion) {
            m_reducesMotion = reducesMotion;
            Q_EMIT reducesMotionChanged();
        }
    }
}

void SystemAppearance::update()
{
    const AppAppearance appearance = m_controller.appearance();
    const bool isDark = appearance == AppAppearance::dark ||
                        (appearance == AppAppearance::system && m_isSystemDark);
    if (isDark != m_isDark) {
        m_isDark = isDark;
        Q_EMIT isDarkChanged();
    }
}

} // namespace vantrel
