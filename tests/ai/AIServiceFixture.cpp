#include "ai/AIServiceFixture.h"

#include "ai/config/AINotifications.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

void PrintTo(const AIFailure &failure, std::ostream *out)
{
    *out << (failure.serviceError() != nullptr ? "service: " : "platform: ")
         << qPrintable(failure.description());
}

void PrintTo(const Result<QString, AIFailure> &result, std::ostream *out)
{
    if (result) {
        *out << '"' << qPrintable(*result) << '"';
    } else {
        PrintTo(result.error(), out);
    }
}

namespace test {

void FakeKeychainStore::setKey(AIProvider provider, const QString &key)
{
    const std::lock_guard lock(m_mutex);
    m_keys[provider] = key;
}

void FakeKeychainStore::holdReads()
{
    const std::lock_guard lock(m_mutex);
    m_isHolding = true;
}

void FakeKeychainStore::releaseReads()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHolding = false;
    }
    m_released.notify_all();
}

std::optional<QString> FakeKeychainStore::apiKey(AIProvider provider)
{
    std::unique_lock lock(m_mutex);
    const auto found = m_keys.find(provider);
    const auto key = found == m_keys.end() ? std::nullopt : std::optional(found->second);
    m_log.append(u"read "_s + rawValue(provider));
    m_released.wait(lock, [this] { return !m_isHolding; });
    return key;
}

Result<void, KeychainError> FakeKeychainStore::saveAPIKey(const QString &, AIProvider)
{
    ADD_FAILURE() << "a request never saves a key";
    return {};
}

Result<void, KeychainError> FakeKeychainStore::deleteAPIKey(AIProvider)
{
    ADD_FAILURE() << "a request never deletes a key";
    return {};
}

AIServiceFixture::AIServiceFixture()
{
    useProvider(AIProvider::custom);
    m_settings.config.baseURL = m_server.url(u"/v1"_s).toString();
    m_settings.config.model = u"test-model"_s;
    m_setupRequired = m_center.observe(aiSetupRequired, [this] { ++m_setupRequiredCount; });
}

void AIServiceFixture::useProvider(AIProvider provider)
{
    m_settings.config.provider = provider;
}

void AIServiceFixture::useKey(AIProvider provider, const QString &key)
{
    useProvider(provider);
    m_keychain->setKey(provider, key);
}

AIServiceError AIServiceFixture::error(AIServiceError::Case kind)
{
    AIServiceError error;
    error.kind = kind;
    return error;
}

AIServiceError AIServiceFixture::requestFailed(const QString &message)
{
    AIServiceError error;
    error.message = message;
    return error;
}

QByteArray AIServiceFixture::events(const QStringList &deltas)
{
    QByteArray stream;
    for (const QString &delta : deltas) {
        const QJsonObject choice{{u"delta"_s, QJsonObject{{u"content"_s, delta}}}};
        const QJsonObject chunk{{u"choices"_s, QJsonArray{choice}}};
        stream += "data: " + QJsonDocument(chunk).toJson(QJsonDocument::Compact) + "\n\n";
    }
    return stream;
}

QByteArray AIServiceFixture::reply(const QString &text)
{
    const QJsonObject choice{{u"message"_s, QJsonObject{{u"content"_s, text}}}};
    const QJsonObject body{{u"choices"_s, QJsonArray{choice}}};
    return QJsonDocument(body).toJson();
}

} // namespace test
} // namespace vantrel
