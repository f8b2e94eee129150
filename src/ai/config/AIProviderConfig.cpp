#include "ai/config/AIProviderConfig.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

std::optional<QUrl> AIProviderConfig::validatedBaseURL(const QString &text)
{
    QUrl url(text.trimmed(), QUrl::StrictMode);
    const QString scheme = url.scheme().toLower();
    if (!url.isValid() || (scheme != "http"_L1 && scheme != "https"_L1)) {
        return std::nullopt;
    }
    return url;
}

bool AIProviderConfig::needsSetup(std::optional<bool> keyMissing) const
{
    return model.trimmed().isEmpty() || !validatedBaseURL(baseURL) ||
           (requiresAPIKey(provider) && keyMissing == true);
}

} // namespace vantrel
