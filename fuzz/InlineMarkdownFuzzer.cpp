// What is shown of a model's text is its own characters in their order without marks, whatever the
// text is, and the looks lie within it.

#include "FuzzCheck.h"

#include "views/InlineMarkdown.h"

namespace {

/// Whether the characters of `part` stand in this order in `whole`. Line feeds and blanks do not
/// count: a link gets one before its address, and code has blanks for line feeds.
bool isDrawnFrom(const QString &part, const QString &whole)
{
    qsizetype position = 0;
    for (const QChar character : part) {
        if (character == u' ' || character == u'\n') {
            continue;
        }
        position = whole.indexOf(character, position) + 1;
        if (position == 0) {
            return false;
        }
    }
    return true;
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const QString source = QString::fromUtf8(input);
    const vantrel::Prose prose = vantrel::inlineMarkdown(source);
    vantrel::fuzz::check(isDrawnFrom(prose.text, source), "only what was written is shown");
    qsizetype end = 0;
    for (const vantrel::ProseSpan &span : prose.spans) {
        vantrel::fuzz::check(span.start >= end && span.length > 0, "looks are in order");
        end = span.start + span.length;
    }
    vantrel::fuzz::check(end <= prose.text.size(), "looks lie within the text");
    vantrel::fuzz::check(source.contains(u'*') || source.contains(u'_') || source.contains(u'`') ||
                             source.contains(u"~~~") || prose.spans.isEmpty(),
                         "nothing without marks looks different");
}
