#include "app/SoftwareUpdateSetup.h"

#include "updates/SystemSoftwareUpdater.h"
#include "updates/UpdaterConfiguration.h"

#include <QLoggingCategory>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(softwareUpdateLog, "com.orbisk.app.SoftwareUpdate", QtInfoMsg)

} // namespace

std::unique_ptr<SoftwareUpdating>
SoftwareUpdateSetup::makeUpdater(const QJsonObject &bundleInformation, HttpLoading &session,
                                 const QString &packageFolder,
                                 const std::function<bool(const QUrl &url)> &openURL)
{
    const auto configuration = UpdaterConfiguration::validated(bundleInformation);
    if (!configuration) {
        qCInfo(softwareUpdateLog, "In-app updates disabled: %s",
               qUtf8Printable(description(configuration.error())));
        return nullptr;
    }
    return makeSystemSoftwareUpdater(FeedSoftwareUpdater::Services{
        session, *configuration, QStringLiteral(VANTREL_VERSION), packageFolder, openURL});
}

} // namespace vantrel
