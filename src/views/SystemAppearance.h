#pragma once

#include "ai/config/AppearanceController.h"

#include <QObject>
#include <QVariant>

class QDBusMessage;

namespace vantrel {

/// Whether the interface is dark now: as the person chose, or as the desktop announces through its
/// portal (`org.freedesktop.appearance`, `color-scheme`), also while the application runs. Without
/// a portal the palette of the platform decides. The portal also tells whether things may move
/// (`org.gnome.desktop.interface`, `enable-animations`); without an answer they do.
/// Thread: interface.
class SystemAppearance final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged)

public:
    /// `controller` must outlive this object.
    explicit SystemAppearance(AppearanceController &controller, QObject *parent = nullptr);

    [[nodiscard]] bool isDark() const { return m_isDark; }
    [[nodiscard]] bool reducesMotion() const { return m_reducesMotion; }

Q_SIGNALS:
    void isDarkChanged();
    void reducesMotionChanged();

private Q_SLOTS:
    void portalSettingChanged(const QDBusMessage &message);

private:
    void askPortal(const QString &group, const QString &key);
    void takeSetting(const QString &group, const QString &key, const QVariant &value);
    void update();

    AppearanceController &m_controller;
    bool m_isSystemDark = false;
    bool m_isDark = false;
    bool m_reducesMotion = false;
};

} // namespace vantrel
