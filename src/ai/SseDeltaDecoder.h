#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringList>

namespace vantrel {

/// Reads the text deltas out of a chat-completions event stream, in whatever blocks it arrives.
///
/// A line that does not begin with "data:" (a comment, an event's name, a blank) and data that is
/// no completion chunk are passed over. Keeps no more than the line that is still arriving. The
/// format: server-sent events, of which only `data` lines matter here.
class SseDeltaDecoder
{
public:
    /// A line longer than this is passed over, so that a broken server cannot fill the memory.
    static constexpr qsizetype maxLineBytes = 16 * 1024 * 1024;

    /// The deltas that `bytes` completes, none of them empty. Nothing after "[DONE]".
    [[nodiscard]] QStringList feed(QByteArrayView bytes);

    /// The delta of a last line without a line feed.
    [[nodiscard]] QStringList finish();

    /// Whether "[DONE]" has come.
    [[nodiscard]] bool isDone() const { return m_isDone; }

private:
    void takeLine(QByteArrayView line, QStringList &deltas);
    void keep(QByteArrayView part);

    QByteArray m_line;        ///< The beginning of a line whose end has not arrived.
    bool m_isTooLong = false; ///< The line that is arriving is passed over.
    bool m_isDone = false;
};

} // namespace vantrel
