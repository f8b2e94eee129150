// However a text is cut between its characters, its parts are the text again, as strings and as
// bytes, and each keeps all of its characters.

#include "CutInput.h"
#include "FuzzCheck.h"

#include "models/TextSlice.h"

#include <algorithm>
#include <cstdint>

namespace {

using vantrel::TextSlice;
using vantrel::fuzz::check;

/// Goes on to the next beginning of a character.
qsizetype boundaryFrom(QByteArrayView utf8, qsizetype position)
{
    while (position < utf8.size() && (std::uint8_t(utf8[position]) & 0xc0U) == 0x80U) {
        ++position;
    }
    return position;
}

/// The text of the parts whose lengths are the bytes of `cuts`, over and over.
QString joined(const TextSlice &text, QByteArrayView cuts)
{
    vantrel::TextSliceCutter cutter(text);
    QString parts;
    qsizetype position = 0;
    for (qsizetype i = 0; position < text.size(); ++i) {
        const qsizetype wanted = cuts.isEmpty() ? 1 : std::uint8_t(cuts[i % cuts.size()]) + 1;
        const qsizetype end = boundaryFrom(text.utf8(), std::min(position + wanted, text.size()));
        const TextSlice part = cutter.cut(position, end - position);
        check(part == text.slice(position, end - position), "both ways of cutting agree");
        check(TextSlice::fromString(part.toString()) == part, "a part keeps its characters");
        parts += part.toString();
        position = end;
    }
    return parts;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const CutInput parts = cutInput(input);
    const QByteArrayView utf8 = parts.text;
    if (!utf8.isValidUtf8()) {
        return;
    }
    const TextSlice text = TextSlice::fromUtf8(utf8.toByteArray());
    const QString whole = text.toString();

    check(whole.toUtf8() == utf8, "a text keeps its characters");
    check(joined(text, parts.cuts) == whole, "the parts are the text");
    check(joined(text, {}) == whole, "its characters are the text");
}
