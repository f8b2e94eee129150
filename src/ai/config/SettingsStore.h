#pragma once

#include "ai/config/SettingsStoring.h"

#include <QString>

namespace vantrel {

class UserDefaults;

/// The preferences under which the settings lie.
struct SettingsKeys
{
    QString providerKey = QStringLiteral("aiProvider");
    QString baseURLKey = QStringLiteral("aiBaseURL");
    QString modelKey = QStringLiteral("aiModel");
    QString appearanceKey = QStringLiteral("appAppearance");
};

/// The settings in the preferences store, each as a text. Thread: any.
class SettingsStore final : public SettingsStoring
{
public:
    /// `defaults` must outlive the store.
    explicit SettingsStore(UserDefaults &defaults, SettingsKeys keys = {});

    [[nodiscard]] AIProviderConfig loadAIConfig() const override;
    void saveAIConfig(const AIProviderConfig &config) override;
    [[nodiscard]] AppAppearance loadAppearance() const override;
    void saveAppearance(AppAppearance appearance) override;

private:
    void save(const QString &key, const QString &value);

    UserDefaults &m_defaults;
    SettingsKeys m_keys;
};

} // namespace vantrel
