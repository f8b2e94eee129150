#include "persistence/StuckKeychain.h"

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

void StuckKeychain::letGo()
{
    {
        const std::lock_guard lock(m_mutex);
        ++m_allowed;
    }
    m_changed.notify_all();
}

void StuckKeychain::waitForCalls(std::size_t count)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_calls.size() >= count; });
}

QStringList StuckKeychain::calls() const
{
    const std::lock_guard lock(m_mutex);
    return QStringList(m_calls.cbegin(), m_calls.cend());
}

std::optional<QString> StuckKeychain::apiKey(AIProvider provider)
{
    hang(u"read "_s + rawValue(provider));
    return key;
}

Result<void, KeychainError> StuckKeychain::saveAPIKey(const QString &newKey, AIProvider provider)
{
    hang(u"save %1 %2"_s.arg(newKey, rawValue(provider)));
    return saved;
}

Result<void, KeychainError> StuckKeychain::deleteAPIKey(AIProvider provider)
{
    hang(u"delete "_s + rawValue(provider));
    return deleted;
}

void StuckKeychain::hang(const QString &call)
{
    std::unique_lock lock(m_mutex);
    m_calls.push_back(call);
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_allowed > 0; });
    --m_allowed;
}

} // namespace vantrel::test
