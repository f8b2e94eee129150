// A source is cut into lines, the lines into paragraphs and fenced blocks, and a paragraph into
// pieces: text, code, and runs of `*` or `_`. The runs that open and close emphasis are then paired
// by CommonMark's own algorithm: each closing run looks back for its opening one, and what it did
// not find is remembered, so that no run is looked at again and again. For `a **b *c***`:
//
//   pieces   "a " "**" "b " "*" "c" "***"
//   pairs    the first `*` of "***" with "*", its rest with "**"
//   result   text "a b c", "b " strong, "c" strong and emphasised

#include "views/InlineMarkdown.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Of parentheses within an address, as in CommonMark.
constexpr int maxNesting = 32;
constexpr qsizetype minFence = 3;
/// Longer ones are taken for text, since the search for one begins anew at each angle bracket.
constexpr qsizetype maxTag = 1'000;
constexpr int none = -1;

bool isAsciiPunctuation(char32_t code)
{
    return (code >= U'!' && code <= U'/') || (code >= U':' && code <= U'@') ||
           (code >= U'[' && code <= U'`') || (code >= U'{' && code <= U'~');
}

bool isPunctuation(char32_t code)
{
    return isAsciiPunctuation(code) || (code >= 0x80 && QChar::isPunct(code));
}

bool isWhitespace(char32_t code)
{
    return code == U'\t' || code == U'\n' || code == U'\f' || code == U'\r' ||
           QChar::category(code) == QChar::Separator_Space;
}

/// The character that ends before `position`; a line feed at the start of the text.
char32_t codeBefore(QStringView text, qsizetype position)
{
    if (position == 0) {
        return U'\n';
    }
    const QChar last = text[position - 1];
    if (last.isLowSurrogate() && position > 1 && text[position - 2].isHighSurrogate()) {
        return QChar::surrogateToUcs4(text[position - 2], last);
    }
    return last.unicode();
}

/// The character that begins at `position`; a line feed at the end of the text.
char32_t codeAt(QStringView text, qsizetype position)
{
    if (position >= text.size()) {
        return U'\n';
    }
    const QChar first = text[position];
    if (first.isHighSurrogate() && position + 1 < text.size() &&
        text[position + 1].isLowSurrogate()) {
        return QChar::surrogateToUcs4(first, text[position + 1]);
    }
    return first.unicode();
}

qsizetype endOfRun(QStringView text, qsizetype position)
{
    const QChar character = text[position];
    while (position < text.size() && text[position] == character) {
        ++position;
    }
    return position;
}

qsizetype skipWhitespace(QStringView text, qsizetype position)
{
    while (position < text.size() && isWhitespace(text[position].unicode())) {
        ++position;
    }
    return position;
}

/// Collects a text and the looks of what is added to it.
class ProseWriter
{
public:
    void add(QStringView text, ProseSpan look = {})
    {
        if (text.isEmpty()) {
            return;
        }
        look.start = m_prose.text.size();
        look.length = text.size();
        m_prose.text += text;
        if (look.isEmphasised || look.isStrong || look.isCode) {
            addSpan(look);
        }
    }

    [[nodiscard]] Prose take() { return std::move(m_prose); }

private:
    void addSpan(const ProseSpan &span)
    {
        if (!m_prose.spans.isEmpty()) {
            ProseSpan &last = m_prose.spans.last();
            ProseSpan joined = span;
            joined.start = last.start;
            joined.length = last.length;
            if (joined == last && last.start + last.length == span.start) {
                last.length += span.length;
                return;
            }
        }
        m_prose.spans.append(span);
    }

    Prose m_prose{};
};

/// A paragraph, in which marks find their partners.
class Paragraph
{
public:
    explicit Paragraph(QStringView source)
        : m_source(source)
    {}

    void write(ProseWriter &writer)
    {
        findBackticks();
        while (m_position < m_source.size()) {
            readOne();
        }
        endText(m_position);
        pairDelimiters(none);
        writePieces(writer);
    }

private:
    struct Piece
    {
        QStringView text{};
        bool isCode = false;
        int emphasisChange = 0; ///< How many begin (or end, below 0) before this piece.
        int strongChange = 0;
    };

    /// A run of `*` or `_` that is not used up yet.
    struct Delimiter
    {
        int piece = 0;
        QChar mark{};
        bool canOpen = false;
        bool canClose = false;
        qsizetype length = 0; ///< As it was written.
        int previous = none;
        int next = none;
    };

    struct Bracket
    {
        int piece = 0;
        int delimiterBefore = none;
        bool isImage = false;
    };

    void readOne()
    {
        const QChar character = m_source[m_position];
        switch (character.unicode()) {
        case u'\\':
            return readBackslash();
        case u'`':
            return readBackticks();
        case u'*':
        case u'_':
            return readDelimiter();
        case u'[':
            return readOpeningBracket(1);
        case u'!':
            if (m_position + 1 < m_source.size() && m_source[m_position + 1] == u'[') {
                return readOpeningBracket(2);
            }
            break;
        case u']':
            return readClosingBracket();
        case u'<':
            return readTag();
        default:
            break;
        }
        ++m_position;
    }

    /// Ends the text that has been read over since the last piece.
    void endText(qsizetype end)
    {
        if (end > m_textStart) {
            addPiece(m_source.sliced(m_textStart, end - m_textStart));
        }
        m_textStart = end;
    }

    int addPiece(QStringView text)
    {
        m_pieces.append(Piece{text});
        return int(m_pieces.size()) - 1;
    }

    void goOnAt(qsizetype position)
    {
        m_position = position;
        m_textStart = position;
    }

    void readBackslash()
    {
        const char32_t escaped = codeAt(m_source, m_position + 1);
        if (m_position + 1 == m_source.size() ||
            (!isAsciiPunctuation(escaped) && escaped != U'\n')) {
            ++m_position;
            return;
        }
        endText(m_position);
        m_textStart = m_position + 1;
        m_position += 2;
    }

    void findBackticks()
    {
        for (qsizetype position = m_source.indexOf(u'`'); position >= 0;
             position = m_source.indexOf(u'`', position)) {
            const qsizetype end = endOfRun(m_source, position);
            m_backticks[end - position].append(position);
            position = end;
        }
        for (QList<qsizetype> &positions : m_backticks) {
            std::reverse(positions.begin(), positions.end());
        }
    }

    /// Where the next run of `length` backticks begins.
    std::optional<qsizetype> closingBackticks(qsizetype length, qsizetype from)
    {
        const auto runs = m_backticks.find(length);
        if (runs == m_backticks.end()) {
            return std::nullopt;
        }
        while (!runs->isEmpty() && runs->last() < from) {
            runs->removeLast();
        }
        return runs->isEmpty() ? std::nullopt : std::optional(runs->last());
    }

    void readBackticks()
    {
        const qsizetype start = endOfRun(m_source, m_position);
        const auto end = closingBackticks(start - m_position, start);
        if (!end) {
            m_position = start;
            return;
        }
        endText(m_position);
        QStringView code = m_source.sliced(start, *end - start);
        const bool isPadded = code.size() > 1 && isBlankOrLineFeed(code.front()) &&
                              isBlankOrLineFeed(code.back()) && !code.trimmed().isEmpty();
        if (isPadded) {
            code = code.sliced(1, code.size() - 2);
        }
        m_pieces[addPiece(code)].isCode = true;
        goOnAt(endOfRun(m_source, *end));
    }

    static bool isBlankOrLineFeed(QChar character)
    {
        return character == u' ' || character == u'\n';
    }

    void readDelimiter()
    {
        const qsizetype end = endOfRun(m_source, m_position);
        const char32_t before = codeBefore(m_source, m_position);
        const char32_t after = codeAt(m_source, end);
        const bool isLeftFlanking =
            !isWhitespace(after) &&
            (!isPunctuation(after) || isWhitespace(before) || isPunctuation(before));
        const bool isRightFlanking =
            !isWhitespace(before) &&
            (!isPunctuation(before) || isWhitespace(after) || isPunctuation(after));
        endText(m_position);
        Delimiter delimiter;
        delimiter.mark = m_source[m_position];
        delimiter.length = end - m_position;
        delimiter.piece = addPiece(m_source.sliced(m_position, delimiter.length));
        // Underscores join the words of names, so within a word they mark nothing.
        const bool isInWord = delimiter.mark == u'_' && isLeftFlanking && isRightFlanking;
        delimiter.canOpen = isLeftFlanking && (!isInWord || isPunctuation(before));
        delimiter.canClose = isRightFlanking && (!isInWord || isPunctuation(after));
        if (delimiter.canOpen || delimiter.canClose) {
            push(delimiter);
        }
        goOnAt(end);
    }

    void push(Delimiter delimiter)
    {
        const int index = int(m_delimiters.size());
        delimiter.previous = m_lastDelimiter;
        if (m_lastDelimiter != none) {
            m_delimiters[m_lastDelimiter].next = index;
        }
        m_delimiters.append(delimiter);
        m_lastDelimiter = index;
    }

    void remove(int index)
    {
        const Delimiter &delimiter = m_delimiters.at(index);
        if (delimiter.previous != none) {
            m_delimiters[delimiter.previous].next = delimiter.next;
        }
        if (delimiter.next != none) {
            m_delimiters[delimiter.next].previous = delimiter.previous;
        } else {
            m_lastDelimiter = delimiter.previous;
        }
    }

    void readOpeningBracket(qsizetype length)
    {
        endText(m_position);
        Bracket bracket;
        bracket.piece = addPiece(m_source.sliced(m_position, length));
        bracket.delimiterBefore = m_lastDelimiter;
        bracket.isImage = length > 1;
        m_brackets.append(bracket);
        goOnAt(m_position + length);
    }

    void readClosingBracket()
    {
        if (m_brackets.isEmpty()) {
            ++m_position;
            return;
        }
        const Bracket bracket = m_brackets.takeLast();
        const bool isActive = bracket.isImage || m_brackets.size() >= m_inactiveBrackets;
        m_inactiveBrackets = std::min(m_inactiveBrackets, m_brackets.size());
        const qsizetype start = m_position + 1;
        const auto end = isActive ? endOfAddress(start) : std::nullopt;
        if (!end) {
            ++m_position;
            return;
        }
        endText(m_position);
        pairDelimiters(bracket.delimiterBefore);
        m_pieces[bracket.piece].text = {};
        const QStringView address = m_source.sliced(start, *end - start);
        if (!address.sliced(1, address.size() - 2).trimmed().isEmpty()) {
            addPiece(u" ");
            addPiece(address);
        }
        if (!bracket.isImage) {
            m_inactiveBrackets = m_brackets.size();
        }
        goOnAt(*end);
    }

    /// Where the parentheses of an address and its title end that begin at `position`.
    [[nodiscard]] std::optional<qsizetype> endOfAddress(qsizetype position) const
    {
        if (position >= m_source.size() || m_source[position] != u'(') {
            return std::nullopt;
        }
        const auto afterAddress = endOfDestination(skipWhitespace(m_source, position + 1));
        if (!afterAddress) {
            return std::nullopt;
        }
        qsizetype end = skipWhitespace(m_source, *afterAddress);
        if (end > *afterAddress && end < m_source.size() &&
            (m_source[end] == u'"' || m_source[end] == u'\'')) {
            const qsizetype closing = m_source.indexOf(m_source[end], end + 1);
            if (closing < 0) {
                return std::nullopt;
            }
            end = skipWhitespace(m_source, closing + 1);
        }
        const bool isClosed = end < m_source.size() && m_source[end] == u')';
        return isClosed ? std::optional(end + 1) : std::nullopt;
    }

    [[nodiscard]] std::optional<qsizetype> endOfDestination(qsizetype position) const
    {
        if (position < m_source.size() && m_source[position] == u'<') {
            for (++position; position < m_source.size(); ++position) {
                const QChar character = m_source[position];
                if (character == u'>') {
                    return position + 1;
                }
                if (character == u'<' || character == u'\n') {
                    return std::nullopt;
                }
            }
            return std::nullopt;
        }
        int depth = 0;
        for (; position < m_source.size(); ++position) {
            const QChar character = m_source[position];
            if (character == u'(' && ++depth > maxNesting) {
                return std::nullopt;
            }
            if (isWhitespace(character.unicode()) || (character == u')' && --depth < 0)) {
                break;
            }
        }
        return position;
    }

    /// What stands in a tag or an address in angle brackets is no mark.
    void readTag()
    {
        static const QRegularExpression tag(
            uR"(<(?:[A-Za-z][A-Za-z0-9+.-]{1,31}+:[^\s<>]*+)"
            uR"(|[A-Za-z0-9.!#$%&'*+/=?^_`{|}~-]++@[A-Za-z0-9.-]++)"
            uR"(|/[A-Za-z][A-Za-z0-9-]*+\s*+)"
            uR"(|[A-Za-z][A-Za-z0-9-]*+(?:\s++[A-Za-z_:][A-Za-z0-9_.:-]*+)"
            uR"((?:\s*+=\s*+(?:[^\s"'=<>`]++|'[^']*+'|"[^"]*+"))?+)*+\s*+/?+)>)"_s);
        const auto match = tag.match(
            m_source.sliced(m_position).first(std::min(maxTag, m_source.size() - m_position)), 0,
            QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
        m_position += match.hasMatch() ? match.capturedEnd() : 1;
    }

    /// Finds the partners among the delimiters behind `bottom`, and forgets them.
    void pairDelimiters(int bottom)
    {
        // Below these no opening run fits a closing one of this mark, kind and length.
        std::array<int, 12> searched{};
        searched.fill(bottom);
        int closer = firstBehind(bottom);
        while (closer != none) {
            const Delimiter &closing = m_delimiters.at(closer);
            if (!closing.canClose) {
                closer = closing.next;
                continue;
            }
            const auto kind = size_t((closing.mark == u'*' ? 6 : 0) + (closing.canOpen ? 3 : 0) +
                                     closing.length % 3);
            const int opener = openerFor(closer, searched.at(kind));
            if (opener == none) {
                searched.at(kind) = closing.previous;
                const int next = closing.next;
                if (!closing.canOpen) {
                    remove(closer);
                }
                closer = next;
            } else {
                closer = join(opener, closer);
            }
        }
        while (m_lastDelimiter != bottom) {
            remove(m_lastDelimiter);
        }
    }

    [[nodiscard]] int firstBehind(int bottom) const
    {
        int first = m_lastDelimiter;
        if (first == bottom) {
            return none;
        }
        while (m_delimiters.at(first).previous != bottom) {
            first = m_delimiters.at(first).previous;
        }
        return first;
    }

    /// `bottom` may have been removed, but the list stays in the order of the indices.
    [[nodiscard]] int openerFor(int closer, int bottom) const
    {
        const Delimiter &closing = m_delimiters.at(closer);
        for (int index = closing.previous; index > bottom;
             index = m_delimiters.at(index).previous) {
            const Delimiter &opening = m_delimiters.at(index);
            if (!opening.canOpen || opening.mark != closing.mark) {
                continue;
            }
            // So that `**a*b**` holds one strong text, not two emphases.
            const bool isOdd = (opening.canClose || closing.canOpen) &&
                               (opening.length + closing.length) % 3 == 0 &&
                               (opening.length % 3 != 0 || closing.length % 3 != 0);
            if (!isOdd) {
                return index;
            }
        }
        return none;
    }

    /// Uses one or two marks of both, and answers which delimiter may close next.
    int join(int opener, int closer)
    {
        const Delimiter opening = m_delimiters.at(opener);
        const Delimiter closing = m_delimiters.at(closer);
        Piece &first = m_pieces[opening.piece];
        Piece &last = m_pieces[closing.piece];
        const bool isStrong = first.text.size() >= 2 && last.text.size() >= 2;
        const qsizetype used = isStrong ? 2 : 1;
        int Piece::*const change = isStrong ? &Piece::strongChange : &Piece::emphasisChange;
        first.text.chop(used);
        last.text = last.text.sliced(used);
        m_pieces[opening.piece + 1].*change += 1;
        last.*change -= 1;

        m_delimiters[opener].next = closer;
        m_delimiters[closer].previous = opener;
        if (first.text.isEmpty()) {
            remove(opener);
        }
        if (!last.text.isEmpty()) {
            return closer;
        }
        remove(closer);
        return closing.next;
    }

    void writePieces(ProseWriter &writer) const
    {
        int emphasis = 0;
        int strong = 0;
        for (const Piece &piece : m_pieces) {
            emphasis += piece.emphasisChange;
            strong += piece.strongChange;
            ProseSpan look;
            look.isEmphasised = emphasis > 0;
            look.isStrong = strong > 0;
            look.isCode = piece.isCode;
            if (piece.isCode && piece.text.contains(u'\n')) {
                writer.add(piece.text.toString().replace(u'\n', u' '), look);
            } else {
                writer.add(piece.text, look);
            }
        }
    }

    QStringView m_source;
    qsizetype m_position = 0;
    qsizetype m_textStart = 0;
    QHash<qsizetype, QList<qsizetype>> m_backticks{}; ///< Their runs by length, the last one first.
    QList<Piece> m_pieces{};
    QList<Delimiter> m_delimiters{};
    int m_lastDelimiter = none;
    QList<Bracket> m_brackets{};
    qsizetype m_inactiveBrackets = 0; ///< The first ones, since no link may hold another.
};

/// What opens a fenced block.
struct Fence
{
    QChar mark{};
    qsizetype length = 0;
    qsizetype indent = 0;
};

std::optional<Fence> openingFence(QStringView line)
{
    Fence fence;
    fence.indent = skipWhitespace(line, 0);
    if (fence.indent == line.size()) {
        return std::nullopt;
    }
    fence.mark = line[fence.indent];
    const qsizetype end = endOfRun(line, fence.indent);
    fence.length = end - fence.indent;
    const bool isFence =
        fence.length >= minFence &&
        (fence.mark == u'~' || (fence.mark == u'`' && !line.sliced(end).contains(u'`')));
    return isFence ? std::optional(fence) : std::nullopt;
}

bool closesFence(QStringView line, const Fence &fence)
{
    const QStringView marks = line.trimmed();
    return marks.size() >= fence.length && endOfRun(marks, 0) == marks.size() &&
           marks.front() == fence.mark;
}

/// Whether a line begins something of its own, in which no mark finds a partner further up.
bool beginsBlock(QStringView line)
{
    static const QRegularExpression start(
        uR"(\s*+(?:#{1,6}+(?:\s|$)|>|\||[-+*](?:\s|$)|[0-9]{1,9}+[.)](?:\s|$)|$))"_s);
    return start
        .match(line, 0, QRegularExpression::NormalMatch,
               QRegularExpression::AnchorAtOffsetMatchOption)
        .hasMatch();
}

/// Cuts a source into paragraphs and fenced blocks.
class ProseReader
{
public:
    explicit ProseReader(QStringView source)
        : m_source(source)
    {}

    Prose read()
    {
        qsizetype start = 0;
        while (start <= m_source.size()) {
            const qsizetype found = m_source.indexOf(u'\n', start);
            const qsizetype end = found < 0 ? m_source.size() : found;
            readLine(start, end);
            start = end + 1;
        }
        endParagraph(m_source.size());
        return m_writer.take();
    }

private:
    void readLine(qsizetype start, qsizetype end)
    {
        const QStringView line = m_source.sliced(start, end - start);
        if (m_fence) {
            if (closesFence(line, *m_fence)) {
                m_fence.reset();
            } else {
                const qsizetype indent = std::min(m_fence->indent, skipWhitespace(line, 0));
                ProseSpan look;
                look.isCode = true;
                beginLine();
                m_writer.add(line.sliced(indent), look);
            }
            return;
        }
        if (const auto fence = openingFence(line)) {
            endParagraph(start - 1);
            m_fence = fence;
            return;
        }
        const bool isBlock = beginsBlock(line);
        if (isBlock) {
            endParagraph(start - 1);
        }
        if (!m_paragraph) {
            m_paragraph = start;
        }
        if (isBlock && line.trimmed().startsWith(u'#')) {
            endParagraph(end); // A heading is one line.
        }
    }

    void endParagraph(qsizetype end)
    {
        if (m_paragraph) {
            beginLine();
            Paragraph(m_source.sliced(*m_paragraph, end - *m_paragraph)).write(m_writer);
            m_paragraph.reset();
        }
    }

    void beginLine()
    {
        if (std::exchange(m_hasLines, true)) {
            m_writer.add(u"\n");
        }
    }

    QStringView m_source;
    ProseWriter m_writer{};
    std::optional<qsizetype> m_paragraph{}; ///< Where the one that is being read begins.
    std::optional<Fence> m_fence{};
    bool m_hasLines = false;
};

} // namespace

Prose inlineMarkdown(const QString &source)
{
    return ProseReader(source).read();
}

} // namespace vantrel
