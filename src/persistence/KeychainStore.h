#pragma once

#include "persistence/KeychainStoring.h"
#include "platform/keychain/SecretItems.h"

#include <memory>

namespace vantrel {

/// The API keys as items of the system's keychain, one for each provider: the store's service, the
/// provider's raw value as the account, the key's UTF-8 bytes as the secret.
class KeychainStore final : public KeychainStoring
{
public:
    KeychainStore(QString service, std::unique_ptr<SecretItems> items);

    [[nodiscard]] std::optional<QString> apiKey(AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> saveAPIKey(const QString &key,
                                                         AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> deleteAPIKey(AIProvider provider) override;

private:
    QString m_service;
    std::unique_ptr<SecretItems> m_items;
};

} // namespace vantrel
