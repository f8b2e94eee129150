#include "updates/UpdaterConfiguration.h"

#include "updates/EdDSASignature.h"
#include "updates/StrictBase64.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString description(UpdaterConfigurationProblem problem)
{
    switch (problem) {
    case UpdaterConfigurationProblem::missingFeedURL:
        return u"SUFeedURL is missing from Info.plist"_s;
    case UpdaterConfigurationProblem::feedURLNotHTTPS:
        return u"SUFeedURL is not an https URL"_s;
    case UpdaterConfigurationProblem::missingPublicKey:
        return u"SUPublicEDKey is missing from Info.plist"_s;
    case UpdaterConfigurationProblem::placeholderPublicKey:
        return u"SUPublicEDKey is still the placeholder; paste the key from Sparkle's "
               "generate_keys into project.yml"_s;
    case UpdaterConfigurationProblem::malformedPublicKey:
        return u"SUPublicEDKey is not a base64-encoded 32-byte EdDSA public key"_s;
    }
    Q_UNREACHABLE();
}

Result<UpdaterConfiguration, UpdaterConfigurationProblem>
UpdaterConfiguration::validated(const QJsonObject &bundleInformation)
{
    // A value that is no text reads as an empty one.
    const QString address = bundleInformation.value(feedURLKey).toString().trimmed();
    if (address.isEmpty()) {
        return failure(UpdaterConfigurationProblem::missingFeedURL);
    }
    const QUrl feedURL(address, QUrl::StrictMode);
    if (!feedURL.isValid() || feedURL.scheme() != "https"_L1) {
        return failure(UpdaterConfigurationProblem::feedURLNotHTTPS);
    }
    const QString key = bundleInformation.value(publicKeyKey).toString().trimmed();
    if (key.isEmpty()) {
        return failure(UpdaterConfigurationProblem::missingPublicKey);
    }
    if (key == placeholderPublicKey) {
        return failure(UpdaterConfigurationProblem::placeholderPublicKey);
    }
    const auto publicKey = decodeStrictBase64(key.toUtf8());
    if (!publicKey || publicKey->size() != ed25519PublicKeyBytes) {
        return failure(UpdaterConfigurationProblem::malformedPublicKey);
    }
    return UpdaterConfiguration{feedURL, *publicKey};
}

} // namespace vantrel
