#pragma once

#include "persistence/KeychainStoring.h"
#include "platform/jobs/Clock.h"
#include "platform/jobs/SerialWorker.h"
#include "platform/jobs/Task.h"

#include <chrono>
#include <memory>

namespace vantrel {

/// The keychain on a thread of its own, with an answer in bounded time: a keyring that is frozen or
/// that waits for the person longer than `answerTime` counts as unavailable. The call itself is
/// left to end by itself, since stopping it in the middle would take the daemon down with it.
class KeychainWorker final
{
public:
    static constexpr std::chrono::milliseconds answerTime = std::chrono::minutes(2);

    /// `clock` must outlive the worker. The store is shared with a call that is left behind.
    KeychainWorker(std::shared_ptr<KeychainStoring> store, Clock &clock);

    Task<std::optional<QString>> apiKey(AIProvider provider);
    Task<Result<void, KeychainError>> saveAPIKey(QString key, AIProvider provider);
    Task<Result<void, KeychainError>> deleteAPIKey(AIProvider provider);

private:
    std::shared_ptr<KeychainStoring> m_store;
    Clock &m_clock;
    SerialWorker m_worker;
};

} // namespace vantrel
