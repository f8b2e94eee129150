#include "views/ProseDocument.h"

#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Laid out in a part of a frame.
constexpr qsizetype pieceLength = 4'096;
constexpr int frameLength = 16; // Milliseconds.

/// With one character for every way in which a document ends a line, so that positions agree.
QString withLineFeeds(QString source)
{
    source.replace("\r\n"_L1, "\n"_L1);
    for (const char16_t ending :
         {u'\r', char16_t(QChar::ParagraphSeparator), char16_t(0xfdd0), char16_t(0xfdd1)}) {
        source.replace(QChar(ending), u'\n');
    }
    return source;
}

/// How much of both is the same, in characters and looks.
qsizetype commonLength(const Prose &former, const Prose &latter)
{
    const qsizetype shorter = std::min(former.text.size(), latter.text.size());
    qsizetype common =
        std::mismatch(former.text.cbegin(), former.text.cbegin() + shorter, latter.text.cbegin())
            .first -
        former.text.cbegin();
    const auto &a = former.spans;
    const auto &b = latter.spans;
    const auto differing = std::mismatch(a.cbegin(), a.cend(), b.cbegin(), b.cend());
    if (differing.first != a.cend()) {
        common = std::min(common, differing.first->start);
    }
    if (differing.second != b.cend()) {
        common = std::min(common, differing.second->start);
    }
    return common;
}

Prose beginningOf(const Prose &prose, qsizetype end)
{
    Prose beginning{prose.text.first(end), {}};
    for (ProseSpan span : prose.spans) {
        if (span.start >= end) {
            break;
        }
        span.length = std::min(span.length, end - span.start);
        beginning.spans.append(span);
    }
    return beginning;
}

} // namespace

void ProseDocument::setDocument(QQuickTextDocument *document)
{
    if (document != m_document) {
        m_document = document;
        writeAnew();
    }
}

void ProseDocument::setSource(const QString &source)
{
    if (source != m_source) {
        m_source = source;
        write();
        Q_EMIT changed();
    }
}

void ProseDocument::setIsMarkdown(bool isMarkdown)
{
    if (isMarkdown != m_isMarkdown) {
        m_isMarkdown = isMarkdown;
        write();
        Q_EMIT changed();
    }
}

void ProseDocument::setLine(qreal line)
{
    if (line != m_line) {
        m_line = line;
        writeAnew();
    }
}

void ProseDocument::setStrongFont(const QFont &font)
{
    if (font != m_strongFont) {
        m_strongFont = font;
        writeAnew();
    }
}

void ProseDocument::setCodeFont(const QFont &font)
{
    if (font != m_codeFont) {
        m_codeFont = font;
        writeAnew();
    }
}

void ProseDocument::componentComplete()
{
    m_isComplete = true;
    writeAnew();
}

void ProseDocument::timerEvent(QTimerEvent *)
{
    if (!m_document) {
        m_nextPiece.stop();
        return;
    }
    writePiece();
    Q_EMIT changed();
}

void ProseDocument::writeAnew()
{
    m_written = {};
    m_width = {};
    if (m_isComplete && m_document) {
        m_document->textDocument()->setUndoRedoEnabled(false);
        m_document->textDocument()->clear();
    }
    write();
    Q_EMIT changed();
}

void ProseDocument::write()
{
    if (!m_isComplete || !m_document) {
        return;
    }
    const QString source = withLineFeeds(m_source);
    m_prose = m_isMarkdown ? inlineMarkdown(source) : Prose{source, {}};
    writePiece();
}

void ProseDocument::writePiece()
{
    const qsizetype common = commonLength(m_written, m_prose);
    const qsizetype pieceEnd = std::min(m_prose.text.size(), common + pieceLength);
    const Prose prose = beginningOf(m_prose, pieceEnd);

    QTextCursor cursor(m_document->textDocument());
    cursor.beginEditBlock();
    cursor.setPosition(int(common));
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    QTextBlockFormat lines;
    lines.setLineHeight(m_line, QTextBlockFormat::FixedHeight);
    cursor.setBlockFormat(lines); // Those that are inserted have the same.
    qsizetype position = common;
    for (const ProseSpan &span : prose.spans) {
        const qsizetype end = span.start + span.length;
        if (end > position) {
            const qsizetype start = std::max(span.start, position);
            cursor.insertText(prose.text.sliced(position, start - position), QTextCharFormat());
            cursor.insertText(prose.text.sliced(start, end - start), formatOf(span));
            position = end;
        }
    }
    cursor.insertText(prose.text.sliced(position), QTextCharFormat());
    cursor.endEditBlock();
    measure(prose, common);
    m_written = prose;
    if (pieceEnd < m_prose.text.size()) {
        m_nextPiece.start(frameLength, this);
    } else {
        m_nextPiece.stop();
    }
}

void ProseDocument::measure(const Prose &prose, qsizetype common)
{
    const QTextDocument &document = *m_document->textDocument();
    ProseWidth::Looks looks{document.defaultFont(), document.defaultTextOption(), {}};
    for (const ProseSpan &span : prose.spans) {
        looks.formats.append({int(span.start), int(span.length), formatOf(span)});
    }
    m_width.measure(prose.text, common, looks);
}

QTextCharFormat ProseDocument::formatOf(const ProseSpan &span) const
{
    QTextCharFormat format;
    if (span.isCode) {
        format.setFontFamilies({m_codeFont.family()});
        format.setProperty(QTextFormat::FontPixelSize, m_codeFont.pixelSize());
    }
    if (span.isStrong) {
        format.setFontWeight(m_strongFont.weight());
    }
    if (span.isEmphasised) {
        format.setFontItalic(true);
    }
    return format;
}

} // namespace vantrel
