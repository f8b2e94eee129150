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
    askPortal();
    update();
}

void SystemAppearance::portalSettingChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 3 && arguments.at(0) == appearanceGroup &&
        arguments.at(1) == colorSchemeKey) {
        takeColorScheme(arguments.at(2));
    }
}

void SystemAppearance::askPortal()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(portalService, portalPath, portalInterface, u"SettingChanged"_s, this,
                SLOT(portalSettingChanged(QDBusMessage)));
    auto question =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, u"Read"_s);
    question << appearanceGroup << colorSchemeKey;
    auto *const watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(question, portalTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) {
            takeColorScheme(reply.value().variant());
        }
    });
}

void SystemAppearance::takeColorScheme(const QVariant &value)
{
    QVariant scheme = value;
    while (scheme.metaType() == QMetaType::fromType<QDBusVariant>()) {
        scheme = scheme.value<QDBusVariant>().variant();
    }
    const uint number = scheme.toUInt();
    m_isSystemDark = number == prefersDark || (number != prefersLight && isPaletteDark());
    update();
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
