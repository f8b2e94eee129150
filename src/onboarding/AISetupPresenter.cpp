#include "onboarding/AISetupPresenter.h"

#include "ai/config/AINotifications.h"
#include "ai/config/SettingsStoring.h"
#include "onboarding/AISetupSession.h"
#include "persistence/APIKeyPresenceStore.h"
#include "platform/jobs/RunQueue.h"

namespace vantrel {

AISetupPresenter::AISetupPresenter(const Services &services, QObject *parent)
    : QObject(parent)
    , m_services(services)
    , m_setupRequired(services.notificationCenter.observe(
          aiSetupRequired,
          // Now when it comes from the interface thread, else as soon as that is free.
          [this] { QMetaObject::invokeMethod(this, [this] { setIsPresented(true); }); }))
{}

void AISetupPresenter::setIsPresented(bool isPresented)
{
    VANTREL_ASSERT_UI_THREAD();
    if (isPresented != m_isPresented) {
        m_isPresented = isPresented;
        Q_EMIT isPresentedChanged();
    }
}

void AISetupPresenter::presentAutomaticallyIfNeeded()
{
    VANTREL_ASSERT_UI_THREAD();
    AISetupSession &session = m_services.session;
    if (m_isPresented || session.hasPresentedAutomatically || !isSetupNeeded()) {
        return;
    }
    session.hasPresentedAutomatically = true;
    setIsPresented(true);
}

bool AISetupPresenter::isSetupNeeded() const
{
    const AIProviderConfig config = m_services.settingsStore.loadAIConfig();
    return config.needsSetup(m_services.keyPresenceStore.isKnownMissing(config.provider));
}

} // namespace vantrel
