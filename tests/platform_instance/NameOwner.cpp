#include "platform_instance/NameOwner.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString path = QStringLiteral("/com/orbisk/app");

} // namespace

NameOwner::NameOwner(const QString &label, Manner manner)
    : m_label(label)
    , m_manner(manner)
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, label))
{
    EXPECT_TRUE(m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots));
    EXPECT_TRUE(m_bus.interface()
                    ->registerService(u"com.orbisk.app"_s, QDBusConnectionInterface::QueueService)
                    .isValid());
}

void NameOwner::leave()
{
    // The connection ends on a thread of its own, where it would look for this object.
    m_bus.unregisterObject(path);
    m_bus = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(m_label);
}

void NameOwner::Open(const QStringList &uris, const QVariantMap &)
{
    m_asked += uris;
    onRequest();
    switch (m_manner) {
    case Manner::answer:
        break;
    case Manner::refuse:
        sendErrorReply(QDBusError::Failed, u"not now"_s);
        break;
    case Manner::stayQuiet:
        setDelayedReply(true);
        break;
    }
}

} // namespace vantrel::test
