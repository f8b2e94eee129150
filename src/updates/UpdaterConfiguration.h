#pragma once

#include "platform/Result.h"

#include <QByteArray>
#include <QJsonObject>
#include <QLatin1StringView>
#include <QString>
#include <QUrl>

namespace vantrel {

/// Why a build offers no updates.
enum class UpdaterConfigurationProblem {
    missingFeedURL,
    feedURLNotHTTPS,
    missingPublicKey,
    placeholderPublicKey,
    malformedPublicKey,
};

/// The sentence for the log.
[[nodiscard]] QString description(UpdaterConfigurationProblem problem);

/// Where a build finds its updates, and whose signature they must bear.
struct UpdaterConfiguration
{
    static constexpr QLatin1StringView feedURLKey{"SUFeedURL"};
    static constexpr QLatin1StringView publicKeyKey{"SUPublicEDKey"};
    static constexpr QLatin1StringView placeholderPublicKey{"REPLACE_WITH_SPARKLE_PUBLIC_ED_KEY"};

    QUrl feedURL{};         ///< With the scheme https.
    QByteArray publicKey{}; ///< Of Ed25519: 32 bytes.

    /// Reads the two keys of the application's bundle information. The first problem is the answer.
    [[nodiscard]] static Result<UpdaterConfiguration, UpdaterConfigurationProblem>
    validated(const QJsonObject &bundleInformation);

    bool operator==(const UpdaterConfiguration &) const = default;
};

} // namespace vantrel
