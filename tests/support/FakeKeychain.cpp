#include "support/FakeKeychain.h"

#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

void FakeKeychain::store(const QString &key, AIProvider provider)
{
    const std::lock_guard lock(m_mutex);
    m_keys[provider] = key;
}

std::optional<QString> FakeKeychain::storedKey(AIProvider provider) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_keys.find(provider);
    return found == m_keys.end() ? std::nullopt : std::optional(found->second);
}

void FakeKeychain::refuseNext(std::int32_t status)
{
    const std::lock_guard lock(m_mutex);
    m_refusal = KeychainError{KeychainError::Case::unhandledStatus, status};
}

void FakeKeychain::hangNext()
{
    const std::lock_guard lock(m_mutex);
    m_hang = Hang::next;
}

void FakeKeychain::letGo()
{
    {
        const std::lock_guard lock(m_mutex);
        m_hang = Hang::no;
    }
    m_changed.notify_all();
}

void FakeKeychain::waitForHang() const
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_hang == Hang::now; });
}

std::optional<QString> FakeKeychain::apiKey(AIProvider provider)
{
    std::unique_lock lock(m_mutex);
    begin(lock, u"read "_s + rawValue(provider));
    const auto found = m_keys.find(provider);
    return found == m_keys.end() ? std::nullopt : std::optional(found->second);
}

Result<void, KeychainError> FakeKeychain::saveAPIKey(const QString &key, AIProvider provider)
{
    std::unique_lock lock(m_mutex);
    begin(lock, u"save %1 %2"_s.arg(key, rawValue(provider)));
    auto saved = refusal();
    if (saved) {
        m_keys[provider] = key;
    }
    return saved;
}

Result<void, KeychainError> FakeKeychain::deleteAPIKey(AIProvider provider)
{
    std::unique_lock lock(m_mutex);
    begin(lock, u"delete "_s + rawValue(provider));
    auto deleted = refusal();
    if (deleted) {
        m_keys.erase(provider);
    }
    return deleted;
}

void FakeKeychain::begin(std::unique_lock<std::mutex> &lock, const QString &call)
{
    log.append(call);
    if (m_hang == Hang::next) {
        m_hang = Hang::now;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_hang != Hang::now; });
    }
}

Result<void, KeychainError> FakeKeychain::refusal()
{
    const std::optional<KeychainError> refusal = std::exchange(m_refusal, std::nullopt);
    if (refusal) {
        return failure(*refusal);
    }
    return {};
}

} // namespace vantrel::test
