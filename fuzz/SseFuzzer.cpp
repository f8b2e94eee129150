// However an event stream is cut into blocks, it gives the same deltas, and none of them is empty.

#include "ai/SseDeltaDecoder.h"

#include <QtGlobal>

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

/// The first byte says how many of the next are the lengths of the pieces; the rest is the stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArrayView input(data + 1, qsizetype(size) - 1);
    const qsizetype cutCount = std::min<qsizetype>(data[0] % 16, input.size());
    const QByteArrayView stream = input.sliced(cutCount);
    const char single = 0;

    const Decoded whole = decode(stream, {});
    if (decode(stream, input.first(cutCount)) != whole ||
        decode(stream, QByteArrayView(&single, 1)) != whole) {
        qFatal("another cut gave other deltas");
    }
    if (whole.deltas.contains(QString())) {
        qFatal("an empty delta");
    }
    return 0;
}
