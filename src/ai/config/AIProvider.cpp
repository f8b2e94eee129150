#include "ai/config/AIProvider.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString rawValue(AIProvider provider)
{
    switch (provider) {
    case AIProvider::openRouter:
        return u"openRouter"_s;
    case AIProvider::openAI:
        return u"openAI"_s;
    case AIProvider::custom:
        return u"custom"_s;
    }
    Q_UNREACHABLE();
}

std::optional<AIProvider> aiProviderFromRawValue(QStringView raw)
{
    for (const AIProvider provider : allAIProviders) {
        if (raw == rawValue(provider)) {
            return provider;
        }
    }
    return std::nullopt;
}

QString displayName(AIProvider provider)
{
    switch (provider) {
    case AIProvider::openRouter:
        return u"OpenRouter"_s;
    case AIProvider::openAI:
        return u"OpenAI"_s;
    case AIProvider::custom:
        return u"Custom"_s;
    }
    Q_UNREACHABLE();
}

QString defaultBaseURL(AIProvider provider)
{
    switch (provider) {
    case AIProvider::openRouter:
        return u"https://openrouter.ai/api/v1"_s;
    case AIProvider::openAI:
        return u"https://api.openai.com/v1"_s;
    case AIProvider::custom:
        return {};
    }
    Q_UNREACHABLE();
}

bool requiresAPIKey(AIProvider provider)
{
    return provider != AIProvider::custom;
}

} // namespace vantrel
