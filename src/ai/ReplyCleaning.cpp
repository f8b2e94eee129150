#include "ai/ReplyCleaning.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString withoutCodeFence(const QString &text)
{
    QString cleaned = text.trimmed();
    if (!cleaned.startsWith("```"_L1)) {
        return cleaned;
    }
    cleaned.remove("```json"_L1);
    cleaned.remove("```"_L1);
    return cleaned.trimmed();
}

QString outermost(const QString &text, QChar opening, QChar closing)
{
    const qsizetype first = text.indexOf(opening);
    const qsizetype last = text.lastIndexOf(closing);
    return first >= 0 && last > first ? text.sliced(first, last - first + 1) : text;
}

} // namespace vantrel
