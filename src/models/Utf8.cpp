#include "models/Utf8.h"

#include <QStringDecoder>

namespace vantrel {

QString textFromUtf8(QByteArrayView utf8)
{
    constexpr QByteArrayView byteOrderMark = "\xef\xbb\xbf";
    if (!utf8.startsWith(byteOrderMark)) {
        return QString::fromUtf8(utf8);
    }
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                    QStringDecoder::Flag::Stateless);
    return decode(utf8);
}

} // namespace vantrel
