#include "ai/CompletionCoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonArray choicesOf(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object().value("choices"_L1).toArray();
}

bool isWholeChoice(const QJsonValue &choice)
{
    return choice["message"_L1]["content"_L1].isString();
}

bool isDeltaChoice(const QJsonValue &choice)
{
    const QJsonValue delta = choice["delta"_L1];
    const QJsonValue content = delta["content"_L1];
    return delta.isObject() && (content.isUndefined() || content.isNull() || content.isString());
}

/// The text without halves of surrogate pairs, which an answer that was cut short may end in and
/// which no strict server takes.
QString validText(const QString &text)
{
    return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}

} // namespace

QByteArray encodeRequest(const ChatCompletionRequest &request)
{
    QJsonArray messages;
    for (const ChatMessagePayload &message : request.messages) {
        messages.append(
            QJsonObject{{u"role"_s, message.role}, {u"content"_s, validText(message.content)}});
    }
    const QJsonObject body{
        {u"model"_s, request.model}, {u"messages"_s, messages}, {u"stream"_s, request.stream}};
    return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

std::optional<QString> decodeResponseContent(const QByteArray &body)
{
    const QJsonArray choices = choicesOf(body);
    if (choices.isEmpty() || !std::all_of(choices.cbegin(), choices.cend(), isWholeChoice)) {
        return std::nullopt;
    }
    return choices.first()["message"_L1]["content"_L1].toString();
}

std::optional<QString> decodeChunkContent(QByteArrayView json)
{
    const QJsonArray choices = choicesOf(QByteArray::fromRawData(json.data(), json.size()));
    if (choices.isEmpty() || !std::all_of(choices.cbegin(), choices.cend(), isDeltaChoice)) {
        return std::nullopt;
    }
    const QJsonValue content = choices.first()["delta"_L1]["content"_L1];
    return content.isString() ? std::optional(content.toString()) : std::nullopt;
}

} // namespace vantrel
