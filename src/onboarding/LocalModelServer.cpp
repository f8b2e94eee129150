#include "onboarding/LocalModelServer.h"

#include "ai/config/LocalModelServers.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString rawValue(LocalModelServer server)
{
    switch (server) {
    case LocalModelServer::ollama:
        return u"ollama"_s;
    case LocalModelServer::lmStudio:
        return u"lmStudio"_s;
    }
    Q_UNREACHABLE();
}

QString displayName(LocalModelServer server)
{
    switch (server) {
    case LocalModelServer::ollama:
        return u"Ollama"_s;
    case LocalModelServer::lmStudio:
        return u"LM Studio"_s;
    }
    Q_UNREACHABLE();
}

QString baseURL(LocalModelServer server)
{
    switch (server) {
    case LocalModelServer::ollama:
        return ollamaBaseURL;
    case LocalModelServer::lmStudio:
        return lmStudioBaseURL;
    }
    Q_UNREACHABLE();
}

} // namespace vantrel
