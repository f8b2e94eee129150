#pragma once

#include "platform/keychain/SecretItems.h"

namespace vantrel {

/// Items of the desktop's Secret Service (GNOME Keyring, KWallet, KeePassXC), over libsecret.
/// A locked keyring may ask the person, and a frozen daemon costs the bus's time-out of 25 s twice.
class SecretServiceItems final : public SecretItems
{
public:
    [[nodiscard]] Match copyMatching(const QString &service, const QString &account) override;
    [[nodiscard]] std::int32_t add(const QString &service, const QString &account,
                                   const QByteArray &secret) override;
    [[nodiscard]] std::int32_t remove(const QString &service, const QString &account) override;
};

} // namespace vantrel
