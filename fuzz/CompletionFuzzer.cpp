// A reply of the completions protocol, whole or one chunk of a stream, says no more than it holds,
// and what it says comes back when it is written as a reply again. A request holds each text that
// it was given.

#include "FuzzCheck.h"

#include "ai/CompletionCoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace {

using namespace Qt::Literals::StringLiterals;
using vantrel::fuzz::check;

QByteArray reply(QLatin1StringView part, const QString &content)
{
    const QJsonObject choice{{part, QJsonObject{{"content"_L1, content}}}};
    const QJsonObject whole{{"choices"_L1, QJsonArray{choice, choice}}};
    return QJsonDocument(whole).toJson(QJsonDocument::Compact);
}

void checkContent(const QByteArray &body)
{
    const std::optional<QString> whole = vantrel::decodeResponseContent(body);
    const std::optional<QString> chunk = vantrel::decodeChunkContent(body);
    check(!whole || whole->size() <= body.size(), "a message is no longer than its reply");
    check(!chunk || chunk->size() <= body.size(), "a delta is no longer than its chunk");
    check(!whole || vantrel::decodeResponseContent(reply("message"_L1, *whole)) == whole,
          "a message written again is the same");
    check(!chunk || vantrel::decodeChunkContent(reply("delta"_L1, *chunk)) == chunk,
          "a delta written again is the same");
}

void checkRequest(const QString &text)
{
    const vantrel::ChatCompletionRequest request{
        u"model"_s, {{u"system"_s, {text}}, {u"user"_s, {text, text}}}, true};
    const QByteArray body = encodeRequest(request);
    const QByteArray quoted = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    const QByteArray escaped = quoted.sliced(2, quoted.size() - 4); // Without [" and "].
    const QByteArray expected = R"({"messages":[{"content":")" + escaped +
                                R"(","role":"system"},{"content":")" + escaped + escaped +
                                R"(","role":"user"}],"model":"model","stream":true})";
    check(body == expected, "a request is its texts in one form");
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const QByteArray bytes = input.toByteArray();
    checkContent(bytes);
    checkRequest(QString::fromUtf8(bytes));
}
