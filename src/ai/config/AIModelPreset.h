#pragma once

#include "ai/config/AIProvider.h"

#include <QHashFunctions>
#include <QList>
#include <QString>

#include <optional>

namespace vantrel {

/// A model that is suggested for a provider.
struct AIModelPreset
{
    QString id{}; ///< The model identifier, as sent to the provider.
    QString displayName{};
    QString note{}; ///< One line under the name.

    bool operator==(const AIModelPreset &) const = default;
};

[[nodiscard]] inline size_t qHash(const AIModelPreset &preset, size_t seed = 0)
{
    return qHashMulti(seed, preset.id, preset.displayName, preset.note);
}

/// The provider's suggestions in order, the default model first; none for `custom`.
[[nodiscard]] QList<AIModelPreset> presets(AIProvider provider);

/// The name of the preset with this identifier, or the trimmed identifier itself.
[[nodiscard]] QString modelDisplayName(const QString &model, AIProvider provider);

/// The preset that this model text means: the default one for a blank text, one with exactly this
/// identifier, or nothing, which stands for a custom model.
[[nodiscard]] std::optional<QString> presetID(const QString &model, AIProvider provider);

} // namespace vantrel
