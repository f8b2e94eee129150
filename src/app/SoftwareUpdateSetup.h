#pragma once

#include "updates/SoftwareUpdating.h"

#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

namespace vantrel {

class HttpLoading;

/// Decides at launch whether this build can update itself.
struct SoftwareUpdateSetup
{
    /// The updater that the bundle's information configures, or none and one line in the log that
    /// says why. `session` must outlive it; `openURL` opens a file in the program that the system
    /// has for it and tells whether it did. Thread: interface.
    [[nodiscard]] static std::unique_ptr<SoftwareUpdating>
    makeUpdater(const QJsonObject &bundleInformation, HttpLoading &session,
                const QString &packageFolder, const std::function<bool(const QUrl &url)> &openURL);
};

} // namespace vantrel
