#pragma once

#include <QObject>

namespace vantrel {

/// Checks for a newer version of the application because a person asked for it. Thread: interface.
class SoftwareUpdating : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged)

public:
    using QObject::QObject;

    /// False while a check is under way.
    [[nodiscard]] virtual bool canCheckForUpdates() const = 0;

    /// Begins a check, which is shown in windows of its own. What goes wrong is told there.
    Q_INVOKABLE virtual void checkForUpdates() = 0;

Q_SIGNALS:
    void canCheckForUpdatesChanged();
};

} // namespace vantrel
