// The macOS keychain behind `SecretItems`; chosen by CMake on Apple systems. Each operation has a
// pool of its own, since the worker's thread has none.

#include "platform/keychain/SecretItems.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>

namespace vantrel {

namespace {

NSMutableDictionary *baseQuery(const QString &service, const QString &account)
{
    return [@{
        (__bridge id)kSecClass : (__bridge id)kSecClassGenericPassword,
        (__bridge id)kSecAttrService : service.toNSString(),
        (__bridge id)kSecAttrAccount : account.toNSString(),
    } mutableCopy];
}

class KeychainItems final : public SecretItems
{
public:
    [[nodiscard]] Match copyMatching(const QString &service, const QString &account) override
    {
        Match match;
        @autoreleasepool {
            NSMutableDictionary *const query = baseQuery(service, account);
            query[(__bridge id)kSecReturnData] = @YES;
            query[(__bridge id)kSecMatchLimit] = (__bridge id)kSecMatchLimitOne;
            CFTypeRef found = nullptr;
            match.status = SecItemCopyMatching((__bridge CFDictionaryRef)query, &found);
            const id item = CFBridgingRelease(found);
            if ([item isKindOfClass:[NSData class]]) {
                match.secret = QByteArray::fromNSData((NSData *)item);
            } else if (match.status == secretStatus::success) {
                match.status = secretStatus::itemNotFound;
            }
        }
        return match;
    }

    [[nodiscard]] std::int32_t add(const QString &service, const QString &account,
                                   const QByteArray &secret) override
    {
        @autoreleasepool {
            NSMutableDictionary *const query = baseQuery(service, account);
            query[(__bridge id)kSecValueData] = secret.toNSData();
            return SecItemAdd((__bridge CFDictionaryRef)query, nullptr);
        }
    }

    [[nodiscard]] std::int32_t remove(const QString &service, const QString &account) override
    {
        @autoreleasepool {
            return SecItemDelete((__bridge CFDictionaryRef)baseQuery(service, account));
        }
    }
};

} // namespace

std::unique_ptr<SecretItems> systemSecretItems()
{
    return std::make_unique<KeychainItems>();
}

} // namespace vantrel
