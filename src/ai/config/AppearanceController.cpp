#include "ai/config/AppearanceController.h"

#include "ai/config/SettingsStoring.h"
#include "platform/jobs/RunQueue.h"

namespace vantrel {

AppearanceController::AppearanceController(SettingsStoring &settingsStore, QObject *parent)
    : QObject(parent)
    , m_settingsStore(settingsStore)
    , m_appearance(settingsStore.loadAppearance())
{}

void AppearanceController::setAppearance(AppAppearance appearance)
{
    VANTREL_ASSERT_UI_THREAD();
    if (appearance == m_appearance) {
        return;
    }
    m_appearance = appearance;
    m_settingsStore.saveAppearance(appearance);
    Q_EMIT appearanceChanged();
}

} // namespace vantrel
