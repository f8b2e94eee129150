#include "platform/JsonDocument.h"

namespace vantrel {

QJsonDocument documentFromJson(const QByteArray &json)
{
    // Qt keeps the mark where it is escaped. Behind a quotation mark of well-formed JSON a byte
    // order mark is always part of a text, so nothing else is changed.
    constexpr QByteArrayView mark = "\"\xef\xbb\xbf";
    return QJsonDocument::fromJson(json.contains(mark) ? QByteArray(json).replace(mark, "\"\\ufeff")
                                                       : json);
}

} // namespace vantrel
