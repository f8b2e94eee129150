// However a reply is cut into deltas, its prose, the order of its events and its record are the
// same, and no prose holds the delimiter.

#include "CutInput.h"
#include "FuzzCheck.h"

#include "ai/HunkExplanationStreamParser.h"

#include <QChar>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <variant>

namespace {

using vantrel::HunkExplanationStreamEvent;
using vantrel::fuzz::check;

struct Parsed
{
    QString prose{};
    bool isProseFinished = false;
    int completedCount = 0;
    vantrel::HunkExplanation record{};

    bool operator==(const Parsed &) const = default;
};

void add(Parsed &parsed, const QList<HunkExplanationStreamEvent> &events)
{
    for (const HunkExplanationStreamEvent &event : events) {
        check(parsed.completedCount == 0, "no event follows the record");
        if (const auto *const delta = std::get_if<vantrel::ProseDelta>(&event)) {
            check(!parsed.isProseFinished && !delta->text.isEmpty(),
                  "prose is never empty and never behind its end");
            parsed.prose += delta->text;
        } else if (const auto *const completed =
                       std::get_if<vantrel::ExplanationCompleted>(&event)) {
            parsed.record = completed->explanation;
            ++parsed.completedCount;
        } else {
            check(!parsed.isProseFinished, "the prose ends once");
            parsed.isProseFinished = true;
        }
    }
}

/// Feeds the reply in pieces whose lengths are the bytes of `cuts`, over and over.
Parsed parse(const QString &reply, QByteArrayView cuts)
{
    vantrel::HunkExplanationStreamParser parser;
    Parsed parsed;
    qsizetype position = 0;
    for (qsizetype i = 0; position < reply.size(); ++i) {
        const qsizetype wanted =
            cuts.isEmpty() ? reply.size() : std::uint8_t(cuts[i % cuts.size()]) + 1;
        const qsizetype length = std::min(wanted, reply.size() - position);
        add(parsed, parser.feed(reply.sliced(position, length)));
        position += length;
    }
    add(parsed, parser.finish());
    check(parsed.isProseFinished && parsed.completedCount == 1, "the prose ends, a record comes");
    return parsed;
}

/// Whether a character could join a hyphen beside it into one that a person sees as a whole. Such a
/// one that arrives behind the delimiter comes too late to change it, so that the cut matters.
bool joinsItsNeighbour(QChar character)
{
    return character.unicode() >= 0x80;
}

bool isCutIndependent(const QString &reply)
{
    const QString &delimiter = vantrel::explanationDelimiter;
    for (qsizetype at = reply.indexOf(delimiter); at >= 0; at = reply.indexOf(delimiter, at + 1)) {
        const qsizetype end = at + delimiter.size();
        if ((at > 0 && joinsItsNeighbour(reply[at - 1])) ||
            (end < reply.size() && joinsItsNeighbour(reply[end]))) {
            return false;
        }
    }
    return true;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const auto [cuts, text] = cutInput(input);
    const QString reply = QString::fromUtf8(text);
    const char single = 0;

    const Parsed whole = parse(reply, {});
    const Parsed cut = parse(reply, cuts);
    const Parsed units = parse(reply, QByteArrayView(&single, 1));

    if (isCutIndependent(reply)) {
        check(cut == whole && units == whole, "another cut gives the same explanation");
        check(!whole.prose.contains(vantrel::explanationDelimiter), "the delimiter is not shown");
        check(reply.startsWith(whole.prose), "the prose is the beginning of the reply");
    }
}
