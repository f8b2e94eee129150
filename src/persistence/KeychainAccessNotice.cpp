#include "persistence/KeychainAccessNotice.h"

#include "platform/UserDefaults.h"
#include "platform/jobs/RunQueue.h"

namespace vantrel {

namespace {

const QString acknowledgementKey = QStringLiteral("keychainAccessNotice.hasAcknowledged");

} // namespace

KeychainAccessNotice::KeychainAccessNotice(UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
{}

void KeychainAccessNotice::setIsShowingNotice(bool isShowing)
{
    VANTREL_ASSERT_UI_THREAD();
    if (isShowing == m_isShowingNotice) {
        return;
    }
    m_isShowingNotice = isShowing;
    Q_EMIT isShowingNoticeChanged();
    if (!isShowing && !m_pendingContinuations.isEmpty()) {
        acknowledge();
    }
}

bool KeychainAccessNotice::hasAcknowledged() const
{
    VANTREL_ASSERT_UI_THREAD();
    // Read again until it is there: another window of the application may have been acknowledged.
    return m_hasAcknowledged || m_defaults.boolean(acknowledgementKey) == true;
}

Task<> KeychainAccessNotice::showIfNeededAndWait()
{
    VANTREL_ASSERT_UI_THREAD();
    if (hasAcknowledged()) {
        co_return;
    }
    setIsShowingNotice(true);
    co_await m_pendingContinuations.wait();
}

void KeychainAccessNotice::acknowledge()
{
    VANTREL_ASSERT_UI_THREAD();
    m_hasAcknowledged = true;
    // Where that fails, the person sees it once more at the next launch.
    m_defaults.setBoolean(acknowledgementKey, true);
    // Waiters leave the list as they are woken, so that hiding the notice finds none waiting.
    m_pendingContinuations.wakeAll();
    setIsShowingNotice(false);
}

} // namespace vantrel
