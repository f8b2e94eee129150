// Nobody's change to a signed feed gets through: what is accepted is the content that was signed,
// to the byte, and what nobody signed is not accepted.

#include "FuzzCheck.h"

#include "support/UpdateMaker.h"
#include "updates/SignedFeed.h"

#include <algorithm>
#include <cstdint>

namespace {

using vantrel::fuzz::check;

/// `feed` with a piece of it replaced. The first bytes of `change` say where the piece begins,
/// counted from the end, since the signature is there, and how long it is.
QByteArray changed(const QByteArray &feed, QByteArrayView change)
{
    constexpr qsizetype numberBytes = 2;
    if (change.size() < numberBytes) {
        return feed;
    }
    const qsizetype position = std::max<qsizetype>(0, feed.size() - std::uint8_t(change[0]));
    const qsizetype length = std::min<qsizetype>(std::uint8_t(change[1]), feed.size() - position);
    return feed.first(position) + change.sliced(numberBytes).toByteArray() +
           feed.sliced(position + length);
}

} // namespace

/// The content, and behind the last null character, if there is one, a change to the signed feed.
void vantrel::fuzz::tryInput(QByteArrayView input)
{
    static const vantrel::test::UpdateMaker maker;
    const qsizetype end = input.lastIndexOf('\0');
    const QByteArray content = (end < 0 ? input : input.first(end)).toByteArray();
    const QByteArray feed = maker.signedFeed(content);

    check(!verifiedFeedContent(content, maker.publicKey()), "what nobody signed is not accepted");
    check(verifiedFeedContent(feed, maker.publicKey()) == content, "a signed content is accepted");
    if (end >= 0) {
        const auto accepted =
            verifiedFeedContent(changed(feed, input.sliced(end + 1)), maker.publicKey());
        check(!accepted || *accepted == content, "only what was signed is accepted");
    }
}
