#include "views/ShownText.h"

namespace vantrel {

namespace {

constexpr qsizetype maxCharacters = 20'000;
constexpr qsizetype maxUnbroken = 200;
constexpr QChar zeroWidthSpace = QChar(0x200B);
constexpr QChar ellipsis = QChar(0x2026);

/// Whether a text may be cut before this character without changing the one before it.
bool isOwnCharacter(QChar character)
{
    return !character.isLowSurrogate() && !character.isMark();
}

QStringView start(QStringView text)
{
    qsizetype end = maxCharacters;
    while (end > 0 && !isOwnCharacter(text[end])) {
        --end;
    }
    return text.first(end);
}

QString withPlacesToBreak(QStringView text)
{
    QString broken;
    qsizetype run = 0;
    qsizetype copied = 0;
    for (qsizetype position = 0; position < text.size(); ++position) {
        const QChar character = text[position];
        if (run >= maxUnbroken && !character.isSpace() && isOwnCharacter(character)) {
            broken += text.sliced(copied, position - copied);
            broken += zeroWidthSpace;
            copied = position;
            run = 0;
        }
        run = character.isSpace() ? 0 : run + 1;
    }
    broken += text.sliced(copied);
    return broken;
}

} // namespace

QString shownText(QStringView text)
{
    if (text.size() <= maxCharacters) {
        return withPlacesToBreak(text);
    }
    return withPlacesToBreak(start(text)) + ellipsis;
}

} // namespace vantrel
