#pragma once

#include "platform/instance/ApplicationInstance.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QStringList>
#include <QVariant>

#include <chrono>

namespace vantrel {

/// The application as the owner of its name on the session bus, where desktops, too, start and
/// raise it (`org.freedesktop.Application`). Without a bus every start is the first. Whoever calls
/// is of the same session, but what comes is checked as if it were not.
class BusInstance final : public ApplicationInstance, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit BusInstance(std::chrono::milliseconds answerLimit);

    [[nodiscard]] Start start(const StartRequest &request) override;

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);

    /// Of the URIs the first that is a folder's on this machine is taken: there is one window.
    /// None: an error.
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);

    /// There are no actions: an error.
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameter,
                                     const QVariantMap &platformData);

private:
    [[nodiscard]] bool handOver(const QString &owner, const StartRequest &request);

    QDBusConnection m_bus;
    std::chrono::milliseconds m_answerLimit;
};

} // namespace vantrel
