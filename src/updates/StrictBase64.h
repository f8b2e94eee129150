#pragma once

#include <QByteArray>

#include <optional>

namespace vantrel {

/// Decodes base64 of the standard alphabet (RFC 4648, section 4) with its padding; nothing when
/// `text` holds anything else, white space included.
[[nodiscard]] std::optional<QByteArray> decodeStrictBase64(const QByteArray &text);

} // namespace vantrel
