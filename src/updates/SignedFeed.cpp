#include "updates/SignedFeed.h"

#include "updates/EdDSASignature.h"
#include "updates/StrictBase64.h"

#include <QList>

namespace vantrel {

namespace {

constexpr QByteArrayView commentStart = "<!-- sparkle-signatures:";
constexpr QByteArrayView commentEnd = "-->";

/// The value of the line `name: value`; empty without it.
QByteArray valueOf(const QByteArray &name, const QByteArray &lines)
{
    for (const QByteArray &line : lines.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed.startsWith(name + ':')) {
            return trimmed.sliced(name.size() + 1).trimmed();
        }
    }
    return {};
}

} // namespace

std::optional<QByteArray> verifiedFeedContent(const QByteArray &feed, const QByteArray &publicKey)
{
    const qsizetype start = feed.lastIndexOf(commentStart);
    const qsizetype end = start < 0 ? -1 : feed.indexOf(commentEnd, start);
    if (end < 0 || !feed.sliced(end + commentEnd.size()).trimmed().isEmpty()) {
        return std::nullopt;
    }
    const QByteArray comment = feed.first(end).sliced(start + commentStart.size());
    const auto signature = decodeStrictBase64(valueOf("edSignature", comment));
    bool isNumber = false;
    const qlonglong length = valueOf("length", comment).toLongLong(&isNumber);
    QByteArray content = feed.first(start);
    if (!signature || !isNumber || length != content.size() ||
        !isSignedWithEd25519(publicKey, *signature, content)) {
        return std::nullopt;
    }
    return content;
}

} // namespace vantrel
