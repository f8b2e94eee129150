#include "platform/instance/linux/BusInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDir>

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace std::chrono_literals;

const QString busName = QStringLiteral("com.orbisk.app");
const QString objectPath = QStringLiteral("/com/orbisk/app");
const QString interfaceName = QStringLiteral("org.freedesktop.Application");
const QString activationTokenKey = QStringLiteral("activation-token");
const QString startupIdKey = QStringLiteral("desktop-startup-id");

/// Long enough for one that has just begun to start.
constexpr auto answerLimit = 10s;

/// The folder of a `file:` URI that names one on this machine; empty for anything else.
QUrl localFolder(const QString &uri)
{
    const QUrl url(uri, QUrl::StrictMode);
    const QString path = url.path(QUrl::FullyDecoded);
    const bool isHere = url.host().isEmpty() || url.host() == "localhost"_L1;
    if (!url.isValid() || !url.isLocalFile() || !isHere || !path.startsWith(u'/') ||
        path.contains(QChar::Null)) {
        return {};
    }
    return QUrl::fromLocalFile(QDir::cleanPath(path));
}

/// A word of the desktop's that may be handed on, say in the environment; otherwise nothing.
QString tokenIn(const QVariantMap &platformData, const QString &key)
{
    constexpr qsizetype maxLength = 1'000;
    const QVariant value = platformData.value(key);
    const QString token = value.typeId() == QMetaType::QString ? value.toString() : QString();
    const bool isPlain = std::all_of(token.cbegin(), token.cend(), [](QChar character) {
        return character > u' ' && character <= u'~';
    });
    return isPlain && token.size() <= maxLength ? token : QString();
}

StartRequest requestFor(const QUrl &folder, const QVariantMap &platformData)
{
    return {folder, tokenIn(platformData, activationTokenKey), tokenIn(platformData, startupIdKey)};
}

QVariantMap platformDataOf(const StartRequest &request)
{
    QVariantMap data;
    if (!request.activationToken.isEmpty()) {
        data.insert(activationTokenKey, request.activationToken);
    }
    if (!request.startupId.isEmpty()) {
        data.insert(startupIdKey, request.startupId);
    }
    return data;
}

} // namespace

BusInstance::BusInstance(std::chrono::milliseconds answerLimit)
    : m_bus(QDBusConnection::sessionBus())
    , m_answerLimit(answerLimit)
{}

ApplicationInstance::Start BusInstance::start(const StartRequest &request)
{
    // The object first: whoever sees the name may call at once.
    if (!m_bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots)) {
        return Start::first;
    }
    for (;;) {
        const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
            m_bus.interface()->registerService(busName, QDBusConnectionInterface::DontQueueService,
                                               QDBusConnectionInterface::DontAllowReplacement);
        if (!reply.isValid() || reply == QDBusConnectionInterface::ServiceRegistered) {
            return Start::first;
        }
        const QString owner = m_bus.interface()->serviceOwner(busName);
        if (!owner.isEmpty() && handOver(owner, request)) {
            return Start::handedOver;
        }
        // One that has ended meanwhile leaves the name to this process, or to a third.
        if (!owner.isEmpty() && m_bus.interface()->serviceOwner(busName) == owner) {
            return Start::unanswered;
        }
    }
}

bool BusInstance::handOver(const QString &owner, const StartRequest &request)
{
    // To the connection, not to the name: that one the bus might start once more.
    const bool opens = !request.folder.isEmpty();
    QDBusMessage call = QDBusMessage::createMethodCall(owner, objectPath, interfaceName,
                                                       opens ? u"Open"_s : u"Activate"_s);
    if (opens) {
        call << QStringList{request.folder.toString(QUrl::FullyEncoded)};
    }
    call << platformDataOf(request);
    const QDBusMessage answer = m_bus.call(call, QDBus::Block, int(m_answerLimit.count()));
    return answer.type() == QDBusMessage::ReplyMessage;
}

void BusInstance::Activate(const QVariantMap &platformData)
{
    Q_EMIT requested(requestFor(QUrl(), platformData));
}

void BusInstance::Open(const QStringList &uris, const QVariantMap &platformData)
{
    for (const QString &uri : uris) {
        const QUrl folder = localFolder(uri);
        if (!folder.isEmpty()) {
            Q_EMIT requested(requestFor(folder, platformData));
            return;
        }
    }
    sendErrorReply(QDBusError::InvalidArgs, u"No folder of this machine is named."_s);
}

void BusInstance::ActivateAction(const QString &, const QVariantList &, const QVariantMap &)
{
    sendErrorReply(QDBusError::InvalidArgs, u"There is no such action."_s);
}

std::unique_ptr<ApplicationInstance> systemInstance()
{
    return std::make_unique<BusInstance>(answerLimit);
}

} // namespace vantrel
