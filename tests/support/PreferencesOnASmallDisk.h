#pragma once

#include "platform/UserDefaults.h"
#include "support/SmallDisk.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <optional>

namespace vantrel::test {

/// What the log says, before the system's reason, of a preference that could not be saved.
inline const QString savingFailed =
    QStringLiteral("the preferences could not be saved, and are kept until they can be: ");

/// Preferences in a folder that is a small disk. Skips its tests where none can be made.
class PreferencesOnASmallDisk : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!disk.isThere()) {
            GTEST_SKIP() << "this process may not make a disk of its own";
        }
        defaults.emplace(folder());
    }

    [[nodiscard]] QString folder() const
    {
        return m_folder.filePath(QStringLiteral("preferences"));
    }

private:
    QTemporaryDir m_folder{};

protected:
    SmallDisk disk{folder()};
    std::optional<UserDefaults> defaults{};
};

} // namespace vantrel::test
