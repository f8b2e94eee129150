#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>

namespace vantrel::test {

/// Another owner of the application's name, on a connection of its own, that does with a request
/// what the test says.
class NameOwner final : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Manner { answer, refuse, stayQuiet };

    /// Owns the name, or waits in the queue for it. `label` is that of its connection.
    NameOwner(const QString &label, Manner manner);
    NameOwner(const NameOwner &) = delete;
    NameOwner &operator=(const NameOwner &) = delete;
    ~NameOwner() override { leave(); }

    /// Leaves the bus, as a process that dies does.
    void leave();

    [[nodiscard]] const QStringList &asked() const { return m_asked; }

    std::function<void()> onRequest = [] {}; ///< Called before the manner is followed.

public Q_SLOTS:
    void Open(const QStringList &uris, const QVariantMap &platformData);

private:
    QString m_label;
    Manner m_manner;
    QDBusConnection m_bus;
    QStringList m_asked{};
};

} // namespace vantrel::test
