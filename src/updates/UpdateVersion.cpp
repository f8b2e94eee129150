#include "updates/UpdateVersion.h"

#include <QVersionNumber>

#include <algorithm>

namespace vantrel {

QString UpdateVersion::text() const
{
    return QVersionNumber(segments).toString();
}

std::optional<UpdateVersion> readVersion(const QString &text)
{
    constexpr qsizetype maxCharacters = 64;
    // Qt takes spaces and signs before a count, too.
    const bool isPlain = std::all_of(text.cbegin(), text.cend(), [](QChar character) {
        return character == u'.' || (character >= u'0' && character <= u'9');
    });
    qsizetype suffix = 0;
    const QVersionNumber version = QVersionNumber::fromString(text, &suffix);
    if (!isPlain || version.isNull() || suffix != text.size() || text.size() > maxCharacters) {
        return std::nullopt;
    }
    return UpdateVersion{version.normalized().segments()};
}

} // namespace vantrel
