#include "ai/config/AIModelPreset.h"

#include <algorithm>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<AIModelPreset> presetOf(const QString &id, AIProvider provider)
{
    const QList<AIModelPreset> all = presets(provider);
    const auto found = std::find_if(all.cbegin(), all.cend(),
                                    [&id](const AIModelPreset &preset) { return preset.id == id; });
    return found == all.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

QList<AIModelPreset> presets(AIProvider provider)
{
    switch (provider) {
    case AIProvider::openRouter:
        return {
            {u"google/gemini-3.8-flash"_s, u"Gemini 3.8 Flash"_s,
             u"Recommended. Fast and strong at code."_s},
            {u"openai/gpt-6-luna"_s, u"GPT-6 Luna"_s, u"Lowest cost."_s},
            {u"anthropic/claude-sonnet-5"_s, u"Claude Sonnet 5"_s,
             u"Highest quality. Costs more per review."_s},
        };
    case AIProvider::openAI:
        return {
            {u"gpt-6-luna"_s, u"GPT-6 Luna"_s, u"Recommended. Fast and low cost."_s},
            {u"gpt-6-sol"_s, u"GPT-6 Sol"_s, u"Higher quality. Costs more per review."_s},
        };
    case AIProvider::custom:
        return {};
    }
    Q_UNREACHABLE();
}

QString modelDisplayName(const QString &model, AIProvider provider)
{
    const QString id = model.trimmed();
    const auto preset = presetOf(id, provider);
    return preset ? preset->displayName : id;
}

std::optional<QString> presetID(const QString &model, AIProvider provider)
{
    const QString id = model.trimmed();
    if (id.isEmpty()) {
        const QList<AIModelPreset> all = presets(provider);
        return all.isEmpty() ? std::nullopt : std::optional(all.first().id);
    }
    return presetOf(id, provider) ? std::optional(id) : std::nullopt;
}

} // namespace vantrel
