#pragma once

#include "ai/config/AIProvider.h"
#include "persistence/KeychainError.h"
#include "platform/Result.h"

#include <QString>

#include <optional>

namespace vantrel {

/// The API keys, one for each provider. Thread: any but the interface's, since every operation may
/// wait for the keyring's daemon or for the person; one call at a time.
class KeychainStoring
{
public:
    KeychainStoring() = default;
    KeychainStoring(const KeychainStoring &) = delete;
    KeychainStoring &operator=(const KeychainStoring &) = delete;
    virtual ~KeychainStoring() = default;

    /// The saved key, untrimmed; nothing when there is none or it cannot be read.
    [[nodiscard]] virtual std::optional<QString> apiKey(AIProvider provider) = 0;

    /// Stores the key in place of an earlier one.
    [[nodiscard]] virtual Result<void, KeychainError> saveAPIKey(const QString &key,
                                                                 AIProvider provider) = 0;

    /// Removes the key; one that is not there is no failure.
    [[nodiscard]] virtual Result<void, KeychainError> deleteAPIKey(AIProvider provider) = 0;
};

} // namespace vantrel
