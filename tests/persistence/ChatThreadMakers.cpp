#include "persistence/ChatThreadMakers.h"

#include "models/PersistedChatThreadCoding.h"

#include <QJsonDocument>

#include <ostream>

namespace vantrel {

void PrintTo(const PersistedChatThread &thread, std::ostream *stream)
{
    constexpr qsizetype enough = 500;
    const QByteArray json = QJsonDocument(toJson(thread)).toJson(QJsonDocument::Compact);
    *stream << json.first(std::min(json.size(), enough)).constData();
}

} // namespace vantrel

namespace vantrel::test {

namespace {

ChatMessage message(ChatMessage::Role role, const QString &text)
{
    return ChatMessage{QUuid::createUuidV5(QUuid(), text), role, text, false};
}

} // namespace

ChatMessage question(const QString &text)
{
    return message(ChatMessage::Role::user, text);
}

ChatMessage answer(const QString &text)
{
    return message(ChatMessage::Role::assistant, text);
}

HunkExplanation explanationSaying(const QString &text)
{
    HunkExplanation explanation;
    explanation.tag = QStringLiteral("fix");
    explanation.explanation = text;
    explanation.points = {text};
    return explanation;
}

QDateTime second(int seconds)
{
    return QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC).addSecs(seconds);
}

} // namespace vantrel::test
