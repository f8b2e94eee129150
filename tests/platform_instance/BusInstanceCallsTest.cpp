// What others on the bus ask of the running application, well-behaved or not.

#include "platform/instance/linux/BusInstance.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class BusInstanceCalls : public testing::Test
{
protected:
    BusInstanceCalls()
    {
        EXPECT_EQ(m_instance.start({}), ApplicationInstance::Start::first);
        QObject::connect(&m_instance, &ApplicationInstance::requested,
                         [this](const StartRequest &request) { m_requests.append(request); });
    }
    ~BusInstanceCalls() override
    {
        QDBusConnection::sessionBus().unregisterObject(u"/com/orbisk/app"_s);
        QDBusConnection::sessionBus().unregisterService(u"com.orbisk.app"_s);
        QDBusConnection::disconnectFromBus(u"caller"_s);
    }

    /// What the caller is answered: nothing, or the name of an error.
    QString call(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"com.orbisk.app"_s, u"/com/orbisk/app"_s, u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        const QDBusPendingCallWatcher answer(m_caller.asyncCall(message));
        bool isAnswered = false;
        QObject::connect(&answer, &QDBusPendingCallWatcher::finished,
                         [&isAnswered] { isAnswered = true; });
        spinUntil([&isAnswered] { return isAnswered; });
        return answer.error().name();
    }

    QString open(const QStringList &uris, const QVariantMap &platformData = {})
    {
        return call(u"Open"_s, {uris, platformData});
    }

    const QString invalid = u"org.freedesktop.DBus.Error.InvalidArgs"_s;
    const QString unknown = u"org.freedesktop.DBus.Error.UnknownMethod"_s;

    BusInstance m_instance{60s};
    QDBusConnection m_caller =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"caller"_s);
    QList<StartRequest> m_requests{};
};

TEST_F(BusInstanceCalls, ActivateAsksForTheWindow)
{
    EXPECT_EQ(call(u"Activate"_s, {QVariantMap()}), QString());

    EXPECT_EQ(m_requests, QList{StartRequest()});
}

TEST_F(BusInstanceCalls, OpenAsksForAFolderWithTheDesktopsWords)
{
    const QVariantMap words{{u"activation-token"_s, u"token"_s},
                            {u"desktop-startup-id"_s, u"id_TIME5"_s},
                            {u"of another version"_s, 7}};

    EXPECT_EQ(open({u"file:///tmp/a%20b%25"_s}, words), QString());

    EXPECT_EQ(m_requests, (QList{StartRequest{QUrl::fromLocalFile(u"/tmp/a b%"_s), u"token"_s,
                                              u"id_TIME5"_s}}));
}

TEST_F(BusInstanceCalls, OfSeveralFoldersTheFirstOfThisMachineIsOpened)
{
    EXPECT_EQ(open({u"https://example.org/"_s, u"file://localhost/first"_s, u"file:///second"_s}),
              QString());

    EXPECT_EQ(m_requests, QList{StartRequest{.folder = QUrl::fromLocalFile(u"/first"_s)}});
}

TEST_F(BusInstanceCalls, WhatIsNoFolderOfThisMachineIsRefused)
{
    const QStringList refused{
        QString(),
        u"/tmp"_s,
        u"tmp"_s,
        u"file:tmp"_s,
        u"file:"_s,
        u"file://elsewhere/tmp"_s,
        u"file:///tmp/%00"_s,
        u"file:///%zz"_s,
        u"FILE :///tmp"_s,
        u"https://example.org/tmp"_s,
        u"data:text/plain,x"_s,
        u"\x01\x1b"_s,
        QString(1'000'000, u'x'),
    };
    for (const QString &uri : refused) {
        EXPECT_EQ(open({uri}), invalid) << uri.left(40).toStdString();
    }
    EXPECT_EQ(open({}), invalid);
    EXPECT_EQ(open(refused), invalid);

    EXPECT_EQ(m_requests, QList<StartRequest>());
}

TEST_F(BusInstanceCalls, AnotherMachineIsNotReachedByAPath)
{
    EXPECT_EQ(open({u"file:////elsewhere/share/.."_s}), QString());

    EXPECT_EQ(m_requests, QList{StartRequest{.folder = QUrl::fromLocalFile(u"/elsewhere"_s)}});
}

TEST_F(BusInstanceCalls, WordsThatNoDesktopSaysAreLeftOut)
{
    const QVariantList odd{
        7,
        true,
        QStringList{u"a"_s},
        QVariantMap{{u"a"_s, 1}},
        QByteArray("a"),
        u"two\nlines"_s,
        u"two words"_s,
        u"Größe"_s,
        QString(1'001, u'x'),
    };
    for (const QVariant &word : odd) {
        EXPECT_EQ(open({u"file:///tmp"_s},
                       {{u"activation-token"_s, word}, {u"desktop-startup-id"_s, word}}),
                  QString());
    }

    const StartRequest plain{.folder = QUrl::fromLocalFile(u"/tmp"_s)};
    EXPECT_EQ(m_requests, QList<StartRequest>(odd.size(), plain));
}

TEST_F(BusInstanceCalls, ThereAreNoActions)
{
    EXPECT_EQ(call(u"ActivateAction"_s, {u"quit"_s, QVariantList(), QVariantMap()}), invalid);

    EXPECT_EQ(m_requests, QList<StartRequest>());
}

TEST_F(BusInstanceCalls, MethodsWithOtherArgumentsOrNamesAreRefused)
{
    EXPECT_EQ(call(u"Open"_s, {u"file:///tmp"_s, QVariantMap()}), unknown);
    EXPECT_EQ(call(u"Open"_s, {}), unknown);
    EXPECT_EQ(call(u"Activate"_s, {QStringList()}), unknown);
    EXPECT_EQ(call(u"start"_s, {}), unknown);
    EXPECT_EQ(call(u"deleteLater"_s, {}), unknown);
    EXPECT_EQ(call(u"requested"_s, {}), unknown);

    EXPECT_EQ(m_requests, QList<StartRequest>());
}

} // namespace
} // namespace vantrel::test
