#include "persistence/KeychainStore.h"

#include <QStringDecoder>

#include <utility>

namespace vantrel {

namespace {

Result<void, KeychainError> unhandled(std::int32_t status)
{
    KeychainError error;
    error.status = status;
    return failure(error);
}

} // namespace

KeychainStore::KeychainStore(QString service, std::unique_ptr<SecretItems> items)
    : m_service(std::move(service))
    , m_items(std::move(items))
{}

std::optional<QString> KeychainStore::apiKey(AIProvider provider)
{
    const SecretItems::Match match = m_items->copyMatching(m_service, rawValue(provider));
    if (match.status != secretStatus::success || !match.secret.isValidUtf8()) {
        return std::nullopt;
    }
    // A plain conversion drops a byte order mark, and a key is to come back as it was stored.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return QString(decode(match.secret));
}

Result<void, KeychainError> KeychainStore::saveAPIKey(const QString &key, AIProvider provider)
{
    // Whatever this answers, the add below tells whether the key is kept.
    (void)m_items->remove(m_service, rawValue(provider));
    const std::int32_t status = m_items->add(m_service, rawValue(provider), key.toUtf8());
    if (status != secretStatus::success) {
        return unhandled(status);
    }
    return {};
}

Result<void, KeychainError> KeychainStore::deleteAPIKey(AIProvider provider)
{
    const std::int32_t status = m_items->remove(m_service, rawValue(provider));
    if (status != secretStatus::success && status != secretStatus::itemNotFound) {
        return unhandled(status);
    }
    return {};
}

} // namespace vantrel
