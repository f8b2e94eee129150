#include "persistence/KeySavingNotice.h"

#include "platform/UserDefaults.h"

#include <QDebug>

namespace vantrel {

namespace {

const QString shownNoticeKey = QStringLiteral("settings.hasShownKeychainNotice");

} // namespace

bool hasShownKeySavingNotice(const UserDefaults &defaults)
{
    return defaults.boolean(shownNoticeKey).value_or(false);
}

void recordShownKeySavingNotice(UserDefaults &defaults)
{
    if (const auto saved = defaults.setBoolean(shownNoticeKey, true); !saved) {
        // Without the record they see it once more before the next key.
        qWarning("a preference could not be saved: %s", qPrintable(saved.error().description()));
    }
}

} // namespace vantrel
