#pragma once

#include <QFont>
#include <QList>
#include <QString>
#include <QTextLayout>
#include <QTextOption>

namespace vantrel {

/// How wide a text is whose lines are not wrapped, kept as the text grows: only lines that changed
/// are measured again. A text item tells the same as its implicit width, for which it lays out the
/// whole text twice more at every change.
class ProseWidth
{
public:
    /// How a text looks: the ranges of `formats` are sorted.
    struct Looks
    {
        QFont font{};
        QTextOption option{};
        QList<QTextLayout::FormatRange> formats{};
    };

    /// Takes a text of which the first `unchanged` characters, and their looks, are those of the
    /// text before.
    void measure(const QString &text, qsizetype unchanged, const Looks &looks);

    /// In pixels. Of a line no more is counted than its first thousand characters.
    [[nodiscard]] qreal width() const { return m_lines.isEmpty() ? 0 : m_lines.last().widest; }

private:
    struct Line
    {
        qsizetype start = 0;
        qreal widest = 0; ///< Of this line and all before it.
    };

    QList<Line> m_lines{};
};

} // namespace vantrel
