#include "ai/AIServiceError.h"

#include <array>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

using Case = AIServiceError::Case;

QString sentence(Case kind)
{
    AIServiceError error;
    error.kind = kind;
    return error.description();
}

} // namespace

QString AIServiceError::description() const
{
    switch (kind) {
    case Case::requestFailed:
        return message;
    case Case::missingAPIKey:
        return u"Add an API key in Settings to use AI features."_s;
    case Case::invalidAPIKey:
        return u"This API key was rejected by the provider. Check it in Settings."_s;
    case Case::blankModel:
        return u"Set a model in Settings to use AI features."_s;
    case Case::invalidBaseURL:
        return u"The configured base URL isn't valid."_s;
    case Case::invalidResponse:
        return u"The AI provider returned an unexpected response."_s;
    }
    Q_UNREACHABLE();
}

std::optional<QString> recoveryLabel(const QString &message)
{
    const std::array<std::pair<Case, QString>, 4> labels{{
        {Case::missingAPIKey, u"Add an API key in Settings →"_s},
        {Case::invalidAPIKey, u"Check your API key in Settings →"_s},
        {Case::blankModel, u"Set a model in Settings →"_s},
        {Case::invalidBaseURL, u"Fix the base URL in Settings →"_s},
    }};
    for (const auto &[kind, label] : labels) {
        if (message == sentence(kind)) {
            return label;
        }
    }
    return std::nullopt;
}

bool isAIServiceErrorSentence(const QString &message)
{
    return recoveryLabel(message).has_value() || message == sentence(Case::invalidResponse);
}

} // namespace vantrel
