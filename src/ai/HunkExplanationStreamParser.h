#pragma once

#include "ai/HunkExplanationStreamEvent.h"

#include <QList>
#include <QString>

#include <optional>

namespace vantrel {

/// Stands between the prose and the metadata of a reply, on a line of its own where the model
/// obeys.
inline const QString explanationDelimiter = QStringLiteral("---META---");

/// Splits a reply that arrives piece by piece into prose, shown as it comes, and the JSON behind
/// the delimiter, of which nothing is ever shown. Also takes the older form of reply, one JSON
/// object.
///
/// Never fails: a reply that ignores the form becomes an explanation whose text is the whole reply.
/// One parser belongs to one stream.
class HunkExplanationStreamParser
{
public:
    /// The events that this delta brings about: prose, the end of the prose, both or none.
    [[nodiscard]] QList<HunkExplanationStreamEvent> feed(const QString &delta);

    /// The events of the reply's end, the completed record last.
    [[nodiscard]] QList<HunkExplanationStreamEvent> finish();

    /// Whether any text has arrived.
    [[nodiscard]] bool hasReceivedContent() const { return m_hasReceivedContent; }

private:
    void emitProse(const QString &prose, QList<HunkExplanationStreamEvent> &events);
    void emitProseFinished(QList<HunkExplanationStreamEvent> &events);

    QString m_emittedProse; ///< All prose handed out.
    QString m_pendingProse; ///< Held back, since it may be the beginning of the delimiter.
    std::optional<QString> m_metadataText; ///< Everything behind the delimiter, once it has come.
    bool m_hasReceivedContent = false;
    bool m_hasFinishedProse = false;
};

} // namespace vantrel
