// However a reply is cut into deltas, its prose, the order of its events and its record are the
// same, and no prose holds the delimiter.

#include "ai/HunkExplanationStreamParser.h"

#include <QChar>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <variant>

namespace {

using vantrel::HunkExplanationStreamEvent;

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
        if (parsed.completedCount > 0) {
            qFatal("an event behind the record");
        }
        if (const auto *const delta = std::get_if<vantrel::ProseDelta>(&event)) {
            if (parsed.isProseFinished || delta->text.isEmpty()) {
                qFatal("prose behind its end, or none");
            }
            parsed.prose += delta->text;
        } else if (const auto *const completed =
                       std::get_if<vantrel::ExplanationCompleted>(&event)) {
            parsed.record = completed->explanation;
            ++parsed.completedCount;
        } else if (parsed.isProseFinished) {
            qFatal("the prose ends twice");
        } else {
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
    if (!parsed.isProseFinished || parsed.completedCount != 1) {
        qFatal("the prose or the record is missing");
    }
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

/// The first byte says how many of the next are the lengths of the pieces; the rest is the reply.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArrayView input(data + 1, qsizetype(size) - 1);
    const qsizetype cutCount = std::min<qsizetype>(data[0] % 16, input.size());
    const QString reply = QString::fromUtf8(input.sliced(cutCount));
    const char single = 0;

    const Parsed whole = parse(reply, {});
    const Parsed cut = parse(reply, input.first(cutCount));
    const Parsed units = parse(reply, QByteArrayView(&single, 1));

    if (isCutIndependent(reply)) {
        if (cut != whole || units != whole) {
            qFatal("another cut gave another explanation");
        }
        if (whole.prose.contains(vantrel::explanationDelimiter)) {
            qFatal("the delimiter was shown");
        }
        if (!reply.startsWith(whole.prose)) {
            qFatal("the prose is not the beginning of the reply");
        }
    }
    return 0;
}
