#pragma once

#include <QByteArray>

#include <optional>

namespace vantrel {

/// The content of a feed whose signature is that of `publicKey`; nothing otherwise.
///
/// The signature stands in a comment at the feed's end, as the updater framework's own tools write
/// it, and covers every byte before the comment:
///
///     <!-- sparkle-signatures:
///     edSignature: base64 of 64 bytes
///     length: the count of those bytes
///     -->
[[nodiscard]] std::optional<QByteArray> verifiedFeedContent(const QByteArray &feed,
                                                            const QByteArray &publicKey);

} // namespace vantrel
