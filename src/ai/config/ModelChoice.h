#pragma once

#include <QHashFunctions>
#include <QString>

#include <optional>

namespace vantrel {

/// What a model picker shows: a preset by its identifier, or, without one, a model identifier that
/// the person types and the picker itself holds.
struct ModelChoice
{
    std::optional<QString> preset{};

    [[nodiscard]] static ModelChoice custom() { return {}; }
    [[nodiscard]] bool isCustom() const { return !preset.has_value(); }

    bool operator==(const ModelChoice &) const = default;
};

[[nodiscard]] inline size_t qHash(const ModelChoice &choice, size_t seed = 0)
{
    return qHashMulti(seed, choice.isCustom(), choice.preset.value_or(QString()));
}

} // namespace vantrel
