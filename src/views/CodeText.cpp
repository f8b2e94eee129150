#include "views/CodeText.h"

#include <QStringDecoder>

#include <algorithm>

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

/// Walks the drawn columns: `take(column, code, mark, width)` for each character, until it answers
/// false.
template<typename Take>
void walk(const TextSlice &line, Take take)
{
    const QByteArrayView utf8 = line.utf8();
    qsizetype column = 0;
    for (qsizetype position = 0; position < utf8.size();) {
        const Character character = characterAt(utf8, position);
        position += character.bytes;
        QString drawn;
        qsizetype width = 1;
        if (character.code == U'\t') {
            width = tabColumns - column % tabColumns;
            drawn = QString(width, u' ');
        } else if (!isPlain(character.code)) {
            drawn = mark(character.code);
            width = drawn.size();
        }
        if (!take(column, character.code, drawn, width)) {
            return;
        }
        column += width;
    }
}

} // namespace

qsizetype codeColumns(const TextSlice &line)
{
    const QByteArrayView utf8 = line.utf8();
    const bool isPrintable = std::all_of(utf8.begin(), utf8.end(),
                                         [](char byte) { return byte >= 0x20 && byte < 0x7f; });
    if (isPrintable) {
        return utf8.size();
    }
    qsizetype columns = 0;
    walk(line, [&columns](qsizetype column, char32_t, const QString &, qsizetype width) {
        columns = column + width;
        return true;
    });
    return columns;
}

QString visibleCode(const TextSlice &line, qsizetype firstColumn, qsizetype count)
{
    QString visible;
    const qsizetype end = firstColumn + count;
    walk(line, [&](qsizetype column, char32_t code, const QString &drawn, qsizetype width) {
        if (column >= end) {
            return false;
        }
        if (column + width <= firstColumn) {
            return true;
        }
        if (drawn.isEmpty()) {
            visible += QChar::fromUcs4(code);
        } else {
            const qsizetype skipped = std::max<qsizetype>(0, firstColumn - column);
            visible += QStringView(drawn).sliced(skipped, std::min(width, end - column) - skipped);
        }
        return true;
    });
    return visible;
}

} // namespace vantrel
