#pragma once

#include <QString>

#include <cstdint>

namespace vantrel {

/// A refusal of the keychain.
struct KeychainError
{
    enum class Case { unhandledStatus };

    Case kind = Case::unhandledStatus;
    std::int32_t status = 0; ///< As the keychain returned it.

    [[nodiscard]] QString description() const;

    bool operator==(const KeychainError &) const = default;
};

} // namespace vantrel
