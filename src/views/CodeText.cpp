#include "views/CodeText.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype tabColumns = 4;

/// One character of UTF-8 and the bytes it took. The text is valid, so nothing is checked.
struct Character
{
    char32_t code = 0;
    qsizetype bytes = 1;
};

Character characterAt(QByteArrayView utf8, qsizetype position)
{
    const auto byte = [&](qsizetype offset) {
        const qsizetype index = std::min(position + offset, utf8.size() - 1);
        return static_cast<unsigned char>(utf8[index]);
    };
    const unsigned char first = byte(0);
    if (first < 0x80) {
        return {first, 1};
    }
    if (first < 0xe0) {
        return {char32_t((first & 0x1fU) << 6U | (byte(1) & 0x3fU)), 2};
    }
    if (first < 0xf0) {
        return {char32_t((first & 0x0fU) << 12U | (byte(1) & 0x3fU) << 6U | (byte(2) & 0x3fU)), 3};
    }
    return {char32_t((first & 0x07U) << 18U | (byte(1) & 0x3fU) << 12U | (byte(2) & 0x3fU) << 6U |
                     (byte(3) & 0x3fU)),
            4};
}

/// Characters that show nothing or change the order of what is shown.
bool isHidden(char32_t code)
{
    return code == 0xad || code == 0x61c || code == 0x180e || (code >= 0x200b && code <= 0x200f) ||
           (code >= 0x2028 && code <= 0x202e) || (code >= 0x2060 && code <= 0x206f) ||
           code == 0xfeff || (code >= 0xfff9 && code <= 0xfffb) || (code >= 0x80 && code <= 0x9f) ||
           (code >= 0xe0000 && code <= 0xe007f);
}

/// What is drawn in the place of `code`, when that is not the character itself.
QString mark(char32_t code)
{
    if (code < 0x20) {
        return QString(QChar(char16_t(0x2400 + code)));
    }
    if (code == 0x7f) {
        return QString(QChar(char16_t(0x2421)));
    }
    return u"‹"_s + QString::number(code, 16).toUpper().rightJustified(4, u'0') + u"›"_s;
}

bool isPlain(char32_t code)
{
    return (code >= 0x20 && code < 0x7f) || (code >= 0xa0 && !isHidden(code));
}

/// First and last of the characters that stand in two columns: those of East Asian scripts, and
/// pictures.
struct Range
{
    char32_t first = 0;
    char32_t last = 0;
};

constexpr std::array wideRanges = {
    Range{0x1100, 0x115f},   Range{0x231a, 0x231b},   Range{0x2329, 0x232a},
    Range{0x23e9, 0x23ec},   Range{0x23f0, 0x23f0},   Range{0x23f3, 0x23f3},
    Range{0x25fd, 0x25fe},   Range{0x2614, 0x2615},   Range{0x2648, 0x2653},
    Range{0x267f, 0x267f},   Range{0x2693, 0x2693},   Range{0x26a1, 0x26a1},
    Range{0x26aa, 0x26ab},   Range{0x26bd, 0x26be},   Range{0x26c4, 0x26c5},
    Range{0x26ce, 0x26ce},   Range{0x26d4, 0x26d4},   Range{0x26ea, 0x26ea},
    Range{0x26f2, 0x26f3},   Range{0x26f5, 0x26f5},   Range{0x26fa, 0x26fa},
    Range{0x26fd, 0x26fd},   Range{0x2705, 0x2705},   Range{0x270a, 0x270b},
    Range{0x2728, 0x2728},   Range{0x274c, 0x274c},   Range{0x274e, 0x274e},
    Range{0x2753, 0x2755},   Range{0x2757, 0x2757},   Range{0x2795, 0x2797},
    Range{0x27b0, 0x27b0},   Range{0x27bf, 0x27bf},   Range{0x2b1b, 0x2b1c},
    Range{0x2b50, 0x2b50},   Range{0x2b55, 0x2b55},   Range{0x2e80, 0x303e},
    Range{0x3041, 0xa4cf},   Range{0xa960, 0xa97f},   Range{0xac00, 0xd7a3},
    Range{0xf900, 0xfaff},   Range{0xfe10, 0xfe19},   Range{0xfe30, 0xfe6f},
    Range{0xff01, 0xff60},   Range{0xffe0, 0xffe6},   Range{0x16fe0, 0x18cff},
    Range{0x1b000, 0x1b2ff}, Range{0x1f004, 0x1f004}, Range{0x1f0cf, 0x1f0cf},
    Range{0x1f18e, 0x1f18e}, Range{0x1f191, 0x1f19a}, Range{0x1f1e6, 0x1f265},
    Range{0x1f300, 0x1f320}, Range{0x1f32d, 0x1f335}, Range{0x1f337, 0x1f37c},
    Range{0x1f37e, 0x1f393}, Range{0x1f3a0, 0x1f3ca}, Range{0x1f3cf, 0x1f3d3},
    Range{0x1f3e0, 0x1f3f0}, Range{0x1f3f4, 0x1f3f4}, Range{0x1f3f8, 0x1f43e},
    Range{0x1f440, 0x1f440}, Range{0x1f442, 0x1f4fc}, Range{0x1f4ff, 0x1f53d},
    Range{0x1f54b, 0x1f54e}, Range{0x1f550, 0x1f567}, Range{0x1f57a, 0x1f57a},
    Range{0x1f595, 0x1f596}, Range{0x1f5a4, 0x1f5a4}, Range{0x1f5fb, 0x1f64f},
    Range{0x1f680, 0x1f6c5}, Range{0x1f6cc, 0x1f6cc}, Range{0x1f6d0, 0x1f6d2},
    Range{0x1f6d5, 0x1f6df}, Range{0x1f6eb, 0x1f6ec}, Range{0x1f6f4, 0x1f6fc},
    Range{0x1f7e0, 0x1f7f0}, Range{0x1f90c, 0x1f93a}, Range{0x1f93c, 0x1f945},
    Range{0x1f947, 0x1f9ff}, Range{0x1fa70, 0x1faff}, Range{0x20000, 0x3fffd},
};

bool isWide(char32_t code)
{
    if (code < wideRanges.front().first) {
        return false;
    }
    const auto range = std::partition_point(wideRanges.begin(), wideRanges.end(),
                                            [code](const Range &r) { return r.last < code; });
    return range != wideRanges.end() && range->first <= code;
}

/// Whether a character is drawn onto the one before it.
bool isCombining(char32_t code)
{
    constexpr char32_t firstOfAll = 0x300;
    if (code < firstOfAll) {
        return false;
    }
    const QChar::Category category = QChar::category(code);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
}

/// One character of a line and where it stands.
struct Drawn
{
    qsizetype offset = 0; ///< In bytes.
    qsizetype bytes = 1;
    qsizetype column = 0;
    qsizetype width = 1; ///< In columns; 0 when it is drawn onto the character before.
    char32_t code = 0;
    QString text{}; ///< When that is not the character itself.

    [[nodiscard]] bool isOnFormer() const { return width == 0; }
};

/// Walks the characters of a line until `take` answers false.
template<typename Take>
void walk(const TextSlice &line, Take take)
{
    const QByteArrayView utf8 = line.utf8();
    Drawn drawn;
    while (drawn.offset < utf8.size()) {
        const Character character = characterAt(utf8, drawn.offset);
        drawn.code = character.code;
        drawn.bytes = character.bytes;
        drawn.width = 1;
        drawn.text.clear();
        if (character.code == U'\t') {
            drawn.width = tabColumns - drawn.column % tabColumns;
            drawn.text = QString(drawn.width, u' ');
        } else if (!isPlain(character.code)) {
            drawn.text = mark(character.code);
            drawn.width = drawn.text.size();
        } else if (isCombining(character.code)) {
            drawn.width = drawn.offset == 0 ? 1 : 0;
        } else if (isWide(character.code)) {
            drawn.width = 2;
        }
        if (!take(drawn)) {
            return;
        }
        drawn.offset += drawn.bytes;
        drawn.column += drawn.width;
    }
}

bool isPrintableAscii(QByteArrayView utf8)
{
    return std::all_of(utf8.begin(), utf8.end(),
                       [](char byte) { return byte >= 0x20 && byte < 0x7f; });
}

/// What a double click takes together.
enum class WordClass { blank, word, other };

WordClass wordClass(char32_t code)
{
    if (QChar::isSpace(code)) {
        return WordClass::blank;
    }
    const bool isWord = code == U'_' || QChar::isLetterOrNumber(code) || QChar::isMark(code);
    return isWord ? WordClass::word : WordClass::other;
}

} // namespace

qsizetype codeColumns(const TextSlice &line)
{
    if (isPrintableAscii(line.utf8())) {
        return line.size();
    }
    qsizetype columns = 0;
    walk(line, [&columns](const Drawn &drawn) {
        columns = drawn.column + drawn.width;
        return true;
    });
    return columns;
}

QList<CodeRun> codeRuns(const TextSlice &line, qsizetype firstColumn, qsizetype count)
{
    QList<CodeRun> runs;
    enum class Kind { none, narrow, foreign, wide };
    Kind kind = Kind::none;
    const qsizetype end = firstColumn + count;
    walk(line, [&](const Drawn &drawn) {
        if (drawn.column >= end && !(drawn.isOnFormer() && drawn.column == end)) {
            return false;
        }
        const bool isBefore = drawn.column + drawn.width <= firstColumn;
        if (isBefore && !(drawn.isOnFormer() && !runs.isEmpty())) {
            return true;
        }
        const bool isMark = !drawn.text.isEmpty();
        const bool isForeign = !isMark && drawn.code >= 0x80;
        const Kind next = drawn.isOnFormer()              ? kind
                          : isForeign && drawn.width == 2 ? Kind::wide
                          : isForeign                     ? Kind::foreign
                                                          : Kind::narrow;
        if (next != kind || (next == Kind::wide && !drawn.isOnFormer())) {
            runs.append(CodeRun{std::max(drawn.column, isMark ? firstColumn : 0)});
            kind = next;
        }
        QString &text = runs.last().text;
        runs.last().endColumn = drawn.column + drawn.width;
        if (isMark) {
            const qsizetype skipped = std::max<qsizetype>(0, firstColumn - drawn.column);
            text += QStringView(drawn.text)
                        .sliced(skipped, std::min(drawn.width, end - drawn.column) - skipped);
        } else {
            text += QChar::fromUcs4(drawn.code);
        }
        return true;
    });
    return runs;
}

QString visibleCode(const TextSlice &line, qsizetype firstColumn, qsizetype count)
{
    QString visible;
    for (const CodeRun &run : codeRuns(line, firstColumn, count)) {
        visible += run.text;
    }
    return visible;
}

qsizetype codeColumnAt(const TextSlice &line, qsizetype offset)
{
    if (isPrintableAscii(line.utf8().first(std::min(offset, line.size())))) {
        return std::min(offset, line.size());
    }
    qsizetype column = 0;
    walk(line, [&](const Drawn &drawn) {
        if (drawn.offset >= offset) {
            return false;
        }
        column = drawn.column + drawn.width;
        return true;
    });
    return column;
}

qsizetype codeOffsetAt(const TextSlice &line, qreal column)
{
    qsizetype offset = 0;
    walk(line, [&](const Drawn &drawn) {
        const bool isBehind = qreal(drawn.column) + qreal(drawn.width) / 2 > column;
        if (isBehind && !drawn.isOnFormer()) {
            return false;
        }
        offset = drawn.offset + drawn.bytes;
        return true;
    });
    return offset;
}

qsizetype codeOffsetAfter(const TextSlice &line, qsizetype offset)
{
    const QByteArrayView utf8 = line.utf8();
    if (offset >= utf8.size()) {
        return utf8.size();
    }
    do {
        offset += characterAt(utf8, offset).bytes;
    } while (offset < utf8.size() && isCombining(characterAt(utf8, offset).code));
    return offset;
}

qsizetype codeOffsetBefore(const TextSlice &line, qsizetype offset)
{
    const QByteArrayView utf8 = line.utf8();
    const auto isContinuation = [&utf8](qsizetype position) {
        return (static_cast<unsigned char>(utf8[position]) & 0xc0U) == 0x80U;
    };
    do {
        do {
            --offset;
        } while (offset > 0 && isContinuation(offset));
    } while (offset > 0 && isCombining(characterAt(utf8, offset).code));
    return std::max<qsizetype>(0, offset);
}

CodeSpan codeWordAt(const TextSlice &line, qsizetype offset)
{
    const QByteArrayView utf8 = line.utf8();
    if (utf8.isEmpty()) {
        return {};
    }
    CodeSpan word;
    word.start = offset < utf8.size() ? offset : codeOffsetBefore(line, offset);
    word.end = codeOffsetAfter(line, word.start);
    const auto classAt = [&](qsizetype position) {
        return wordClass(characterAt(utf8, position).code);
    };
    const WordClass kind = classAt(word.start);
    if (kind == WordClass::other) {
        return word;
    }
    while (word.end < utf8.size() && classAt(word.end) == kind) {
        word.end = codeOffsetAfter(line, word.end);
    }
    while (word.start > 0 && classAt(codeOffsetBefore(line, word.start)) == kind) {
        word.start = codeOffsetBefore(line, word.start);
    }
    return word;
}

} // namespace vantrel
