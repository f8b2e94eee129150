#pragma once

#include "ai/config/AppearanceController.h"

#include <QObject>
#include <QVariant>

class QDBusMessage;

namespace vantrel {

/// Whether the interface is dark now: as the person chose, or as the desktop announces through its
/// portal (`org.freedesktop.appearance`, `color-scheme`), also while the application runs. Without
/// a portal the palette of the platform decides. Thread: interface.
class SystemAppearance final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)

public:
    /// `controller` must outlive this object.
    explicit SystemAppearance(AppearanceController &controller, QObject *parent = nullptr);

    [[nodiscard]] bool isDark() const { return m_isDark; }

Q_SIGNALS:
    void isDarkChanged();

private Q_SLOTS:
    void portalSettingChanged(const QDBusMessage &message);

private:
    void askPortal();
    void takeColorScheme(const QVariant &value);
    void update();

    AppearanceController &m_controller;
    bool m_isSystemDark = false;
    bool m_isDark = false;
};

} // namespace vantrel
