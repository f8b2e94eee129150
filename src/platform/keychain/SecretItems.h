#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>

namespace vantrel {

/// The statuses of `SecretItems`, numbered as in the macOS keychain.
namespace secretStatus {
inline constexpr std::int32_t success = 0;
inline constexpr std::int32_t ioError = -36;           ///< Anything that has no status of its own.
inline constexpr std::int32_t notAvailable = -25291;   ///< No service, no bus, no answer in time.
inline constexpr std::int32_t noSuchKeychain = -25294; ///< No collection to keep items in.
inline constexpr std::int32_t itemNotFound = -25300;
inline constexpr std::int32_t interactionNotAllowed =
    -25308; ///< Locked, or the prompt was dismissed.
} // namespace secretStatus

/// The system's keeper of secrets, as three operations on items that a service and an account name.
/// Thread: any but the interface's, since each may wait for a daemon or for the person; one call at
/// a time. No secret ever reaches a log or an error.
class SecretItems
{
public:
    SecretItems() = default;
    SecretItems(const SecretItems &) = delete;
    SecretItems &operator=(const SecretItems &) = delete;
    virtual ~SecretItems() = default;

    /// The answer of `copyMatching`; `secret` is meaningful on success only.
    struct Match
    {
        std::int32_t status = secretStatus::itemNotFound;
        QByteArray secret{};
    };

    [[nodiscard]] virtual Match copyMatching(const QString &service, const QString &account) = 0;
    [[nodiscard]] virtual std::int32_t add(const QString &service, const QString &account,
                                           const QByteArray &secret) = 0;
    [[nodiscard]] virtual std::int32_t remove(const QString &service, const QString &account) = 0;
};

/// The items of this operating system's own keychain.
[[nodiscard]] std::unique_ptr<SecretItems> systemSecretItems();

} // namespace vantrel
