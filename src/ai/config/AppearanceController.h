#pragma once

#include "ai/config/AppAppearance.h"

#include <QObject>

namespace vantrel {

class SettingsStoring;

/// The chosen appearance as observable state. Thread: interface.
class AppearanceController final : public QObject
{
    Q_OBJECT

public:
    /// Loads the stored appearance. `settingsStore` must outlive the controller.
    explicit AppearanceController(SettingsStoring &settingsStore, QObject *parent = nullptr);

    [[nodiscard]] AppAppearance appearance() const { return m_appearance; }

    /// Stores and announces a new appearance at once; the current one again does nothing.
    void setAppearance(AppAppearance appearance);

Q_SIGNALS:
    void appearanceChanged();

private:
    SettingsStoring &m_settingsStore;
    AppAppearance m_appearance;
};

} // namespace vantrel
