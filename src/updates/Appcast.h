#pragma once

#include "updates/UpdateVersion.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <cstdint>
#include <optional>

namespace vantrel {

/// A version that a feed offers.
struct AppcastItem
{
    UpdateVersion version{};
    QString versionName{};          ///< As people call it.
    QString notes{};                ///< What is new, as plain text or Markdown; may be empty.
    QUrl packageURL{};              ///< https.
    std::int64_t packageLength = 0; ///< Bytes; at least 1.
    QByteArray packageSignature{};  ///< Of Ed25519.

    bool operator==(const AppcastItem &) const = default;
};

/// Reads an appcast: an RSS 2.0 feed whose items carry the elements and attributes of the updater
/// framework's XML namespace. Gives the items with a Debian package for one of `systems`, the
/// values of `sparkle:os` that mean this one; items of a channel are for testers and left out.
/// Notes come only from a description in plain text or Markdown: HTML would have to be rendered.
///
/// Nothing when the feed is not well-formed, has a document type, or when an item for this system
/// has no version, no https address, no length or no signature.
[[nodiscard]] std::optional<QList<AppcastItem>> parseAppcast(const QByteArray &feed,
                                                             const QStringList &systems);

} // namespace vantrel
