#include "platform/JsonDocument.h"

namespace vantrel {

QJsonDocument documentFromJson(const QByteArray &json)
{
    // Qt keeps the mark where it is escaped. Behind a quotation mark of well-formed JSON a byte
    // order mark is always part of a text, so nothing else is changed.
    constexpr QByteArrayView mark = "\"\xef\xbb\xbf";
    // Its first byte is rare, and found faster than a sequence.
    const bool hasMark = json.contains(mark[1]) && json.contains(mark);
    return QJsonDocument::fromJson(hasMark ? QByteArray(json).replace(mark, "\"\\ufeff") : json);
}

} // namespace vantrel
