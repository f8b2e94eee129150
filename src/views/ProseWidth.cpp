#include "views/ProseWidth.h"

#include <algorithm>

namespace vantrel {

namespace {

/// Nothing that is as wide as its text is as wide as this.
constexpr qsizetype measuredLength = 1'000;

qreal widthOf(const QString &line, const ProseWidth::Looks &looks,
              const QList<QTextLayout::FormatRange> &formats)
{
    QTextOption unwrapped = looks.option;
    unwrapped.setWrapMode(QTextOption::NoWrap);
    QTextLayout layout(line, looks.font);
    layout.setTextOption(unwrapped);
    layout.setFormats(formats);
    layout.beginLayout();
    const QTextLine measured = layout.createLine();
    layout.endLayout();
    return measured.isValid() ? measured.naturalTextWidth() : 0;
}

} // namespace

void ProseWidth::measure(const QString &text, qsizetype unchanged, const Looks &looks)
{
    while (m_lines.size() > 1 && m_lines.last().start > unchanged) {
        m_lines.removeLast();
    }
    qsizetype start = m_lines.isEmpty() ? 0 : m_lines.takeLast().start;
    auto format = std::partition_point(
        looks.formats.cbegin(), looks.formats.cend(),
        [start](const auto &range) { return range.start + range.length <= start; });
    while (start <= text.size()) {
        const qsizetype feed = text.indexOf(u'\n', start);
        const qsizetype end = feed < 0 ? text.size() : feed;
        const qsizetype length = std::min(end - start, measuredLength);
        QList<QTextLayout::FormatRange> formats;
        for (; format != looks.formats.cend() && format->start < end; ++format) {
            const int first = std::max(0, format->start - int(start));
            const int last = format->start + format->length - int(start);
            formats.append({first, last - first, format->format});
            if (last > end - start) {
                break; // It goes on in the next line.
            }
        }
        const qreal own = widthOf(text.sliced(start, length), looks, formats);
        m_lines.append(Line{start, std::max(width(), own)});
        start = end + 1;
    }
}

} // namespace vantrel
