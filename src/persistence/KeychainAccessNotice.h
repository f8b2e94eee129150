#pragma once

#include "platform/jobs/Task.h"
#include "platform/jobs/WaiterList.h"

#include <QObject>

namespace vantrel {

class UserDefaults;

/// The explanation that a person sees once before the first keychain access of the application's
/// life on this machine. Whoever is about to cause an access waits here first. Thread: interface.
class KeychainAccessNotice final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isShowingNotice READ isShowingNotice WRITE setIsShowingNotice NOTIFY
                   isShowingNoticeChanged)

public:
    /// `defaults` holds the acknowledgement and must outlive the notice.
    explicit KeychainAccessNotice(UserDefaults &defaults, QObject *parent = nullptr);

    [[nodiscard]] bool isShowingNotice() const { return m_isShowingNotice; }

    /// The person has seen it, in this launch or an earlier one.
    [[nodiscard]] bool hasAcknowledged() const;

    /// Setting it to false while somebody waits, as a dismissal does, acknowledges the notice.
    void setIsShowingNotice(bool isShowing);

    /// Ends once the person may be asked for keychain access; shows the notice until then.
    Task<> showIfNeededAndWait();

    /// Records the acknowledgement for good and releases all waiters in order of arrival.
    Q_INVOKABLE void acknowledge();

Q_SIGNALS:
    void isShowingNoticeChanged();

private:
    UserDefaults &m_defaults;
    WaiterList m_pendingContinuations;
    bool m_hasAcknowledged = false; ///< Once true, never reset.
    bool m_isShowingNotice = false;
};

} // namespace vantrel
