#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <cstdint>

namespace vantrel::fuzz {

/// An input that says in how many pieces a text comes.
struct CutInput
{
    QByteArrayView cuts{}; ///< One length to a byte.
    QByteArrayView text{};
};

/// The first byte says how many of the next are lengths; the rest is the text.
inline CutInput cutInput(QByteArrayView input)
{
    if (input.isEmpty()) {
        return {};
    }
    const QByteArrayView rest = input.sliced(1);
    const qsizetype cutCount = std::min<qsizetype>(std::uint8_t(input[0]) % 16, rest.size());
    return {rest.first(cutCount), rest.sliced(cutCount)};
}

} // namespace vantrel::fuzz
