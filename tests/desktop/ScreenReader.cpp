#include "ScreenReader.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <chrono>
#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString accessibleInterface = u"org.a11y.atspi.Accessible"_s;
const QString actionInterface = u"org.a11y.atspi.Action"_s;
const QString rootPath = u"/org/a11y/atspi/accessible/root"_s;

constexpr int answerLimitMs = 60'000;

QDBusConnection accessibilityBus()
{
    const QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s);
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, answerLimitMs);
    return QDBusConnection::connectToBus(answer.arguments().value(0).toString(),
                                         u"accessibility"_s);
}

QDBusPendingCall ask(const QDBusConnection &bus, const QString &service, const QString &path,
                     const QString &interface, const QString &method,
                     const QVariantList &arguments = {})
{
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, method);
    question.setArguments(arguments);
    return bus.asyncCall(question, answerLimitMs);
}

QDBusPendingCall askProperty(const QDBusConnection &bus, const QString &service,
                             const QString &path, const QString &property)
{
    return ask(bus, service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
               {accessibleInterface, property});
}

/// The only value of an answer; an invalid one when the question failed.
QVariant valueOf(QDBusPendingCall call)
{
    call.waitForFinished();
    const QVariant value = call.isError() ? QVariant() : call.reply().arguments().value(0);
    return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
}

/// A name on the bus and a path.
using Reference = std::pair<QString, QString>;

QList<Reference> referencesIn(const QVariant &value)
{
    QList<Reference> references;
    const auto argument = value.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString service;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> service >> path;
        argument.endStructure();
        references.append({service, path.path()});
    }
    argument.endArray();
    return references;
}

/// The states come as two numbers of 32 bits, the lower one first.
quint64 statesIn(const QVariant &value)
{
    QList<quint32> words;
    value.value<QDBusArgument>() >> words;
    return words.value(0) | quint64{words.value(1)} << 32;
}

} // namespace

QString listing(const QList<ShownItem> &items)
{
    QString lines;
    for (const ShownItem &item : items) {
        lines += QString(2 * qsizetype{item.depth}, u' ') + item.role + u" \""_s + item.name +
                 u'"' + (item.description.isEmpty() ? QString() : u" · "_s + item.description) +
                 (item.isFocused() ? u" (focused)"_s : QString()) +
                 (item.isSelected() ? u" (selected)"_s : QString()) + u'\n';
    }
    return lines;
}

ScreenReader::ScreenReader()
    : m_bus(accessibilityBus())
{}

std::optional<QList<ShownItem>> ScreenReader::read()
{
    if (m_application.isEmpty()) {
        m_application = findApplication();
    }
    QList<ShownItem> items;
    if (m_application.isEmpty() || !readBelow(rootPath, 0, items)) {
        return std::nullopt;
    }
    return items;
}

QStringList ScreenReader::actions(const ShownItem &item) const
{
    const QVariant actions =
        valueOf(ask(m_bus, m_application, item.path, actionInterface, u"GetActions"_s));
    if (!actions.isValid()) {
        return {};
    }
    const auto argument = actions.value<QDBusArgument>();
    QStringList names;
    argument.beginArray();
    while (!argument.atEnd()) {
        QString name;
        QString description;
        QString key;
        argument.beginStructure();
        argument >> name >> description >> key;
        argument.endStructure();
        names.append(name);
    }
    argument.endArray();
    return names;
}

bool ScreenReader::act(const ShownItem &item, const QString &action) const
{
    const auto index = int(actions(item).indexOf(action));
    return index >= 0 &&
           valueOf(ask(m_bus, m_application, item.path, actionInterface, u"DoAction"_s, {index}))
               .isValid();
}

QString ScreenReader::textIn(const ShownItem &field) const
{
    const int end = -1;
    return valueOf(ask(m_bus, m_application, field.path, u"org.a11y.atspi.Text"_s, u"GetText"_s,
                       {0, end}))
        .toString();
}

QString ScreenReader::findApplication() const
{
    const QVariant children = valueOf(
        ask(m_bus, u"org.a11y.atspi.Registry"_s, rootPath, accessibleInterface, u"GetChildren"_s));
    if (children.isValid()) {
        for (const auto &[service, path] : referencesIn(children)) {
            if (valueOf(askProperty(m_bus, service, path, u"Name"_s)) == u"vantrel"_s) {
                return service;
            }
        }
    }
    return {};
}

bool ScreenReader::readBelow(const QString &path, int depth, QList<ShownItem> &items) const
{
    const auto question = [&](const QString &method) {
        return ask(m_bus, m_application, path, accessibleInterface, method);
    };
    const QDBusPendingCall states = question(u"GetState"_s);
    const QDBusPendingCall role = question(u"GetRoleName"_s);
    const QDBusPendingCall name = askProperty(m_bus, m_application, path, u"Name"_s);
    const QDBusPendingCall description = askProperty(m_bus, m_application, path, u"Description"_s);
    const QDBusPendingCall children = question(u"GetChildren"_s);

    const QVariant stateWords = valueOf(states);
    const QVariant childReferences = valueOf(children);
    if (!stateWords.isValid() || !childReferences.isValid()) {
        return false;
    }
    ShownItem item;
    item.role = valueOf(role).toString();
    item.name = valueOf(name).toString();
    item.description = valueOf(description).toString();
    item.states = statesIn(stateWords);
    item.path = path;
    item.depth = depth;
    if (item.isShowing()) {
        items.append(item);
    }
    for (const Reference &child : referencesIn(childReferences)) {
        if (!readBelow(child.second, depth + 1, items)) {
            return false;
        }
    }
    return true;
}

} // namespace vantrel::test
