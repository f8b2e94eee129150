#include "ai/CompletionCoding.h"

#include "models/Utf8.h"
#include "platform/JsonDocument.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonArray choicesOf(const QByteArray &json)
{
    return documentFromJson(json).object().value("choices"_L1).toArray();
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
    return text.isValidUtf16() ? text : textFromUtf8(text.toUtf8());
}

/// Appends what stands between the quotes of a JSON string, little by little: a document would hold
/// the whole text twice more, and the diff of a large file is many megabytes.
void appendCharacters(QByteArray &json, const QString &text)
{
    constexpr qsizetype pieceLength = 65'536;
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = std::min(begin + pieceLength, text.size());
        if (end < text.size() && text.at(end).isLowSurrogate()) {
            ++end;
        }
        const QJsonArray piece{text.sliced(begin, end - begin)};
        const QByteArray array = QJsonDocument(piece).toJson(QJsonDocument::Compact);
        json += QByteArrayView(array).sliced(2, array.size() - 4); // Without [" and "].
        begin = end;
    }
}

void appendString(QByteArray &json, const QStringList &pieces)
{
    json += '"';
    for (const QString &piece : pieces) {
        appendCharacters(json, validText(piece));
    }
    json += '"';
}

/// Enough for the body of most requests. A body that grows step by step is copied, and may take
/// twice its room.
qsizetype expectedSize(const ChatCompletionRequest &request)
{
    constexpr qsizetype keys = 512;
    qsizetype characters = keys;
    for (const ChatMessagePayload &message : request.messages) {
        for (const QString &piece : message.content) {
            characters += piece.size();
        }
    }
    return characters + characters / 8; // For escapes and what is not ASCII.
}

} // namespace

QByteArray encodeRequest(const ChatCompletionRequest &request)
{
    QByteArray body;
    body.reserve(expectedSize(request));
    body += R"({"messages":[)";
    for (const ChatMessagePayload &message : request.messages) {
        body += body.endsWith('}') ? R"(,{"content":)" : R"({"content":)";
        appendString(body, message.content);
        body += R"(,"role":)";
        appendString(body, {message.role});
        body += '}';
    }
    body += R"(],"model":)";
    appendString(body, {request.model});
    body += request.stream ? R"(,"stream":true})" : R"(,"stream":false})";
    return body;
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
