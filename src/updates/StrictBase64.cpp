#include "updates/StrictBase64.h"

namespace vantrel {

std::optional<QByteArray> decodeStrictBase64(const QByteArray &text)
{
    constexpr qsizetype charactersOfABlock = 4;
    // Qt takes a text without its padding, too.
    if (text.size() % charactersOfABlock != 0) {
        return std::nullopt;
    }
    auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded) {
        return std::nullopt;
    }
    return *decoded;
}

} // namespace vantrel
