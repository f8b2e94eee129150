#include "ai/config/SettingsStore.h"

#include "platform/UserDefaults.h"

#include <utility>

namespace vantrel {

SettingsStore::SettingsStore(UserDefaults &defaults, SettingsKeys keys)
    : m_defaults(defaults)
    , m_keys(std::move(keys))
{}

AIProviderConfig SettingsStore::loadAIConfig() const
{
    const auto stored = m_defaults.text(m_keys.providerKey);
    const auto provider = stored ? aiProviderFromRawValue(*stored) : std::nullopt;
    AIProviderConfig config;
    if (!provider) {
        // What is stored beside an unknown provider belongs to that provider, so it is not read.
        config.baseURL = defaultBaseURL(config.provider);
        return config;
    }
    config.provider = *provider;
    config.baseURL = m_defaults.text(m_keys.baseURLKey).value_or(defaultBaseURL(*provider));
    config.model = m_defaults.text(m_keys.modelKey).value_or(QString());
    return config;
}

void SettingsStore::saveAIConfig(const AIProviderConfig &config)
{
    save(m_keys.providerKey, rawValue(config.provider));
    save(m_keys.baseURLKey, config.baseURL);
    save(m_keys.modelKey, config.model);
}

AppAppearance SettingsStore::loadAppearance() const
{
    const auto stored = m_defaults.text(m_keys.appearanceKey);
    const auto appearance = stored ? appAppearanceFromRawValue(*stored) : std::nullopt;
    return appearance.value_or(AppAppearance::system);
}

void SettingsStore::saveAppearance(AppAppearance appearance)
{
    save(m_keys.appearanceKey, rawValue(appearance));
}

void SettingsStore::save(const QString &key, const QString &value)
{
    // A preference that cannot be kept is no reason to stop the person; the log tells of it.
    m_defaults.setText(key, value);
}

} // namespace vantrel
