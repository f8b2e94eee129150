// The reply: prose, then the delimiter, then one JSON object. A delta may end anywhere, so the
// longest end of the received text that could still become the delimiter is held back:
//
//   delta            shown            held
//   "Adds retry --"  "Adds retry "    "--"
//   "-MET"                            "---MET"
//   "A---\n{...}"    (prose ends)     metadata: "\n{...}"
//
// What is held back is at most nine characters, so each delta costs its own length.
//
// Characters are those that a person sees: a delimiter whose last hyphen carries an accent is not
// the delimiter.

#include "ai/HunkExplanationStreamParser.h"

#include "ai/ExplanationReply.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

/// Whether a user-perceived character begins at `position`, on one side of which stands a hyphen.
/// Looks at its neighbourhood only.
bool isCharacterBoundary(QStringView text, qsizetype position)
{
    if (position == 0 || position == text.size()) {
        return true;
    }
    if (text[position - 1].unicode() < 0x80 && text[position].unicode() < 0x80) {
        return true;
    }
    constexpr qsizetype reach = 4;
    const qsizetype begin = std::max<qsizetype>(0, position - reach);
    const QStringView neighbourhood =
        text.sliced(begin, std::min(text.size(), position + reach) - begin);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, neighbourhood);
    finder.setPosition(position - begin);
    return finder.isAtBoundary();
}

/// Where the delimiter stands in `text`, or -1.
qsizetype delimiterPosition(const QString &text)
{
    qsizetype found = text.indexOf(explanationDelimiter);
    while (found >= 0 && !(isCharacterBoundary(text, found) &&
                           isCharacterBoundary(text, found + explanationDelimiter.size()))) {
        found = text.indexOf(explanationDelimiter, found + 1);
    }
    return found;
}

/// The length of the longest end of `text` that the delimiter begins with.
qsizetype heldLength(const QString &text)
{
    const QStringView delimiter = explanationDelimiter;
    for (qsizetype k = std::min(delimiter.size() - 1, text.size()); k > 0; --k) {
        if (QStringView(text).last(k) == delimiter.first(k) &&
            isCharacterBoundary(text, text.size() - k)) {
            return k;
        }
    }
    return 0;
}

} // namespace

QList<HunkExplanationStreamEvent> HunkExplanationStreamParser::feed(const QString &delta)
{
    m_hasReceivedContent = true;
    QList<HunkExplanationStreamEvent> events;
    if (m_metadataText) {
        m_metadataText->append(delta);
        return events;
    }
    m_pendingProse.append(delta);
    const qsizetype delimiter = delimiterPosition(m_pendingProse);
    if (delimiter >= 0) {
        m_metadataText = m_pendingProse.sliced(delimiter + explanationDelimiter.size());
        const QString prose = std::exchange(m_pendingProse, {}).first(delimiter);
        emitProse(prose, events);
        emitProseFinished(events);
        return events;
    }
    const qsizetype shown = m_pendingProse.size() - heldLength(m_pendingProse);
    emitProse(m_pendingProse.first(shown), events);
    m_pendingProse.remove(0, shown);
    return events;
}

QList<HunkExplanationStreamEvent> HunkExplanationStreamParser::finish()
{
    QList<HunkExplanationStreamEvent> events;
    emitProse(std::exchange(m_pendingProse, {}), events);
    emitProseFinished(events);
    events.append(ExplanationCompleted{explanationFromReply(m_emittedProse, m_metadataText)});
    return events;
}

void HunkExplanationStreamParser::emitProse(const QString &prose,
                                            QList<HunkExplanationStreamEvent> &events)
{
    if (!prose.isEmpty()) {
        m_emittedProse.append(prose);
        events.append(ProseDelta{prose});
    }
}

void HunkExplanationStreamParser::emitProseFinished(QList<HunkExplanationStreamEvent> &events)
{
    if (!std::exchange(m_hasFinishedProse, true)) {
        events.append(ProseFinished{});
    }
}

} // namespace vantrel
