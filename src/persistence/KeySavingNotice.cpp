#include "persistence/KeySavingNotice.h"

#include "platform/UserDefaults.h"

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
    // Where that fails, the person sees it once more before the first key of the next launch.
    defaults.setBoolean(shownNoticeKey, true);
}

} // namespace vantrel
