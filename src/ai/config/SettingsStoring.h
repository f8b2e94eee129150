#pragma once

#include "ai/config/AIProviderConfig.h"
#include "ai/config/AppAppearance.h"

namespace vantrel {

/// The provider configuration and the appearance in the preferences. Loading never fails: what is
/// missing or unknown falls back to the defaults. Thread: any.
class SettingsStoring
{
public:
    SettingsStoring() = default;
    SettingsStoring(const SettingsStoring &) = delete;
    SettingsStoring &operator=(const SettingsStoring &) = delete;
    virtual ~SettingsStoring() = default;

    [[nodiscard]] virtual AIProviderConfig loadAIConfig() const = 0;
    virtual void saveAIConfig(const AIProviderConfig &config) = 0;
    [[nodiscard]] virtual AppAppearance loadAppearance() const = 0;
    virtual void saveAppearance(AppAppearance appearance) = 0;
};

} // namespace vantrel
