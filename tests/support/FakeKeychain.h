#pragma once

#include "persistence/KeychainStoring.h"
#include "support/CallLog.h"

#include <condition_variable>
#include <map>
#include <mutex>

namespace vantrel::test {

/// A keychain in memory, whose next change can be refused and whose next call can be made to hang
/// as on a locked keyring. Thread: any.
class FakeKeychain final : public KeychainStoring
{
public:
    /// What was asked: "read openRouter", "save sk-1 openAI", "delete custom". It lives as long as
    /// the fake, which a call that is left behind keeps.
    CallLog log{};

    /// Puts a key there as if an earlier run had saved it.
    void store(const QString &key, AIProvider provider);
    [[nodiscard]] std::optional<QString> storedKey(AIProvider provider) const;

    /// Refuses the next save or delete with this status.
    void refuseNext(std::int32_t status);

    /// Lets the next call hang until it is let go. A call that does not hang ends at once.
    void hangNext();
    void letGo();

    /// Blocks until a call hangs.
    void waitForHang() const;

    [[nodiscard]] std::optional<QString> apiKey(AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> saveAPIKey(const QString &key,
                                                         AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> deleteAPIKey(AIProvider provider) override;

private:
    enum class Hang { no, next, now };

    void begin(std::unique_lock<std::mutex> &lock, const QString &call);
    Result<void, KeychainError> refusal();

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;

    // Guarded by `m_mutex`.
    std::map<AIProvider, QString> m_keys{};
    std::optional<KeychainError> m_refusal{};
    Hang m_hang = Hang::no;
};

} // namespace vantrel::test
