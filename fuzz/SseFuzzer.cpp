// However an event stream is cut into blocks, it gives the same deltas, and none of them is empty.

#include "CutInput.h"
#include "FuzzCheck.h"

#include "ai/SseDeltaDecoder.h"

#include <algorithm>
#include <cstdint>

namespace {

struct Decoded
{
    QStringList deltas{};
    bool isDone = false;

    bool operator==(const Decoded &) const = default;
};

/// Feeds the stream in pieces whose lengths are the bytes of `cuts`, over and over.
Decoded decode(QByteArrayView stream, QByteArrayView cuts)
{
    vantrel::SseDeltaDecoder decoder;
    Decoded decoded;
    qsizetype position = 0;
    for (qsizetype i = 0; position < stream.size(); ++i) {
        const qsizetype wanted =
            cuts.isEmpty() ? stream.size() : std::uint8_t(cuts[i % cuts.size()]) + 1;
        const qsizetype length = std::min(wanted, stream.size() - position);
        decoded.deltas += decoder.feed(stream.sliced(position, length));
        position += length;
    }
    decoded.deltas += decoder.finish();
    decoded.isDone = decoder.isDone();
    return decoded;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const auto [cuts, stream] = cutInput(input);
    const char single = 0;

    const Decoded whole = decode(stream, {});
    check(decode(stream, cuts) == whole && decode(stream, QByteArrayView(&single, 1)) == whole,
          "another cut gives the same deltas");
    check(!whole.deltas.contains(QString()), "no delta is empty");
    check(whole.deltas.join(QString()).size() <= stream.size(),
          "deltas are no longer than they came");
}
