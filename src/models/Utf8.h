#pragma once

#include <QByteArrayView>
#include <QString>

namespace vantrel {

/// The text whose UTF-8 this is, to the character. Qt takes a byte order mark at the start for a
/// sign of the encoding and drops it; in the middle of a file, a path or an answer, and wherever
/// pieces are decoded one by one, it is a character as any other.
[[nodiscard]] QString textFromUtf8(QByteArrayView utf8);

} // namespace vantrel
