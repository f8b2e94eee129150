#include "persistence/KeychainWorker.h"

#include "platform/jobs/FirstOf.h"
#include "platform/keychain/SecretItems.h"

#include <utility>
#include <variant>

namespace vantrel {

namespace {

Result<void, KeychainError> noAnswer()
{
    KeychainError error;
    error.status = secretStatus::notAvailable;
    return failure(error);
}

Task<std::monostate> timeUp(Clock &clock)
{
    co_await clock.sleep(KeychainWorker::answerTime);
    co_return std::monostate();
}

/// The worker's answer, or `late` when it does not come in time.
template<typename Value>
Task<Value> answerInTime(Task<Value> answer, Task<std::monostate> timer, Value late)
{
    auto race = firstOf(std::move(answer), std::move(timer));
    auto first = co_await race;
    if (auto *const value = std::get_if<0>(&first)) {
        co_return std::move(*value);
    }
    co_return std::move(late);
}

} // namespace

KeychainWorker::KeychainWorker(std::shared_ptr<KeychainStoring> store, Clock &clock)
    : m_store(std::move(store))
    , m_clock(clock)
    , m_worker(SerialWorker::AtEnd::leave)
{}

Task<std::optional<QString>> KeychainWorker::apiKey(AIProvider provider)
{
    auto read = [store = m_store, provider](const WorkControl &) {
        return store->apiKey(provider);
    };
    return answerInTime(m_worker.run(std::move(read)), timeUp(m_clock), std::optional<QString>());
}

Task<Result<void, KeychainError>> KeychainWorker::saveAPIKey(QString key, AIProvider provider)
{
    auto save = [store = m_store, key = std::move(key), provider](const WorkControl &) {
        return store->saveAPIKey(key, provider);
    };
    return answerInTime(m_worker.run(std::move(save)), timeUp(m_clock), noAnswer());
}

Task<Result<void, KeychainError>> KeychainWorker::deleteAPIKey(AIProvider provider)
{
    auto remove = [store = m_store, provider](const WorkControl &) {
        return store->deleteAPIKey(provider);
    };
    return answerInTime(m_worker.run(std::move(remove)), timeUp(m_clock), noAnswer());
}

} // namespace vantrel
