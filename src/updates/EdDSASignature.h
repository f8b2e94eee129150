#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace vantrel {

/// Of Ed25519 (RFC 8032).
constexpr qsizetype ed25519PublicKeyBytes = 32;
constexpr qsizetype ed25519SignatureBytes = 64;

/// Whether `signature` is one of `message` by the owner of `publicKey`. False, too, for a key or a
/// signature of a wrong length. Takes about a second for a gigabyte. Thread: any.
[[nodiscard]] bool isSignedWithEd25519(const QByteArray &publicKey, const QByteArray &signature,
                                       QByteArrayView message);

} // namespace vantrel
