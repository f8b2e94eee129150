#include "onboarding/VendorPages.h"

#include <QString>

namespace vantrel::VendorPages {

using namespace Qt::Literals::StringLiterals;

QUrl keys(AIProvider provider)
{
    switch (provider) {
    case AIProvider::openRouter:
        return QUrl(u"https://openrouter.ai/settings/keys"_s);
    case AIProvider::openAI:
        return QUrl(u"https://platform.openai.com/api-keys"_s);
    case AIProvider::custom:
        return {};
    }
    Q_UNREACHABLE();
}

QUrl openRouterCredits()
{
    return QUrl(u"https://openrouter.ai/settings/credits"_s);
}

QUrl download(LocalModelServer server)
{
    switch (server) {
    case LocalModelServer::ollama:
        return QUrl(u"https://ollama.com/download"_s);
    case LocalModelServer::lmStudio:
        return QUrl(u"https://lmstudio.ai"_s);
    }
    Q_UNREACHABLE();
}

} // namespace vantrel::VendorPages
