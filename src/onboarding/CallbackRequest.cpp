#include "onboarding/CallbackRequest.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <array>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The bytes as text, with a byte order mark if there is one; nothing when they are not UTF-8.
std::optional<QString> decodeUtf8(QByteArrayView bytes)
{
    if (!bytes.isValidUtf8()) {
        return std::nullopt;
    }
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return QString(decode(bytes));
}

bool isHexDigit(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

/// Every '%' begins a byte in two digits.
bool hasWholeEscapes(const QByteArray &encoded)
{
    constexpr qsizetype digits = 2;
    for (qsizetype at = encoded.indexOf('%'); at >= 0; at = encoded.indexOf('%', at + 1)) {
        if (at + digits >= encoded.size() || !isHexDigit(encoded.at(at + 1)) ||
            !isHexDigit(encoded.at(at + 2))) {
            return false;
        }
    }
    return true;
}

/// The text itself where it cannot be decoded.
QString percentDecoded(const QString &text)
{
    const QByteArray encoded = text.toUtf8();
    if (!hasWholeEscapes(encoded)) {
        return text;
    }
    return decodeUtf8(QByteArray::fromPercentEncoding(encoded)).value_or(text);
}

CallbackQueryItem parseItem(const QString &piece)
{
    // Only these two are sentences, in which a form's encoding writes spaces as '+'; a code may
    // hold a '+' of its own.
    static const std::array sentences{u"error"_s, u"error_description"_s};
    const qsizetype equals = piece.indexOf(u'=');
    CallbackQueryItem item;
    item.name = percentDecoded(piece.left(equals));
    if (equals < 0) {
        return item;
    }
    QString value = piece.sliced(equals + 1);
    if (std::find(sentences.cbegin(), sentences.cend(), item.name) != sentences.cend()) {
        value.replace(u'+', u' ');
    }
    item.value = percentDecoded(value);
    return item;
}

QList<CallbackQueryItem> parseQuery(const QString &query)
{
    QList<CallbackQueryItem> items;
    const QStringList pieces = query.split(u'&', Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        items.append(parseItem(piece));
    }
    return items;
}

} // namespace

std::optional<QString> CallbackRequest::firstValue(const QString &name) const
{
    const auto found =
        std::find_if(query.cbegin(), query.cend(),
                     [&name](const CallbackQueryItem &item) { return item.name == name; });
    return found == query.cend() ? std::nullopt : found->value;
}

std::optional<CallbackRequest> parseCallbackRequest(QByteArrayView bytes)
{
    const qsizetype headEnd = bytes.indexOf(endOfHead);
    if (headEnd < 0) {
        return std::nullopt;
    }
    const QByteArrayView line = bytes.first(bytes.indexOf("\r\n"));
    const std::optional<QString> text = decodeUtf8(line);
    if (!text) {
        return std::nullopt;
    }
    constexpr qsizetype partCount = 3;
    const QStringList parts = text->split(u' ');
    if (parts.size() != partCount || parts.at(0).isEmpty() || !parts.at(1).startsWith(u'/') ||
        !parts.at(2).startsWith("HTTP/"_L1)) {
        return std::nullopt;
    }
    const QString &target = parts.at(1);
    const qsizetype mark = target.indexOf(u'?');
    CallbackRequest request;
    request.method = parts.at(0);
    request.path = target.left(mark);
    request.query = mark < 0 ? QList<CallbackQueryItem>() : parseQuery(target.sliced(mark + 1));
    return request;
}

} // namespace vantrel
