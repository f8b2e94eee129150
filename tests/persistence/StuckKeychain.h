#pragma once

#include "persistence/KeychainStoring.h"

#include <QStringList>

#include <condition_variable>
#include <mutex>
#include <vector>

namespace vantrel::test {

/// A keychain whose every call hangs until the test lets it go. Thread: any.
class StuckKeychain final : public KeychainStoring
{
public:
    /// Lets one call, the running or the next one, give its answer.
    void letGo();

    /// Blocks until `count` calls have begun.
    void waitForCalls(std::size_t count);

    /// What was asked: "read openRouter", "save sk-1 openAI", "delete custom".
    [[nodiscard]] QStringList calls() const;

    [[nodiscard]] std::optional<QString> apiKey(AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> saveAPIKey(const QString &key,
                                                         AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> deleteAPIKey(AIProvider provider) override;

    /// The answers; written before the calls.
    std::optional<QString> key{};
    Result<void, KeychainError> saved{};
    Result<void, KeychainError> deleted{};

private:
    void hang(const QString &call);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<QString> m_calls{}; ///< Guarded by `m_mutex`.
    std::size_t m_allowed = 0;      ///< Guarded by `m_mutex`.
};

} // namespace vantrel::test
