#include "platform/log/LogText.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype maxLength = 4'096;

bool isShownAsItIs(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

QString writtenOut(char32_t character)
{
    if (character == U'\n') {
        return u"\\n"_s;
    }
    if (character == U'\t') {
        return u"\\t"_s;
    }
    return u"\\u{"_s + QString::number(character, 16) + u'}';
}

/// Where to cut the text without parting a surrogate pair.
qsizetype shownLength(const QString &message)
{
    if (message.size() <= maxLength) {
        return message.size();
    }
    return message.at(maxLength - 1).isHighSurrogate() ? maxLength - 1 : maxLength;
}

} // namespace

QString logText(const QString &fullMessage)
{
    QString message = fullMessage;
    while (message.endsWith(u'\n')) {
        message.chop(1);
    }
    const qsizetype length = shownLength(message);
    QString text;
    text.reserve(length);
    for (qsizetype i = 0; i < length; ++i) {
        char32_t character = message.at(i).unicode();
        if (QChar::isHighSurrogate(character) && i + 1 < length &&
            message.at(i + 1).isLowSurrogate()) {
            ++i;
            character = QChar::surrogateToUcs4(char16_t(character), message.at(i).unicode());
        }
        if (isShownAsItIs(character)) {
            text += QChar::fromUcs4(character);
        } else {
            text += writtenOut(character);
        }
    }
    if (length < message.size()) {
        text += u"… (%1 more characters)"_s.arg(message.size() - length);
    }
    return text;
}

QByteArray ownCategory(const LogEntry &entry)
{
    const QByteArray beginning = QByteArray(logSubsystem) + '.';
    return entry.category.startsWith(beginning) ? entry.category.sliced(beginning.size())
                                                : QByteArray();
}

QByteArray logLine(const LogEntry &entry)
{
    QByteArray line = QByteArray(logIdentifier) + ": ";
    const QByteArray own = ownCategory(entry);
    if (!own.isEmpty()) {
        line += own + ": ";
    } else if (!entry.category.isEmpty() && entry.category != "default") {
        line += entry.category + ": ";
    }
    return line + entry.message.toUtf8() + '\n';
}

} // namespace vantrel
