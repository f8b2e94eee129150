#pragma once

#include "ai/OpenAICompatibleAIService.h"
#include "ai/config/SettingsStoring.h"
#include "persistence/KeychainWorker.h"
#include "platform/NotificationCenter.h"
#include "platform/http/NetworkHttpLoader.h"
#include "platform/jobs/Job.h"
#include "support/CallLog.h"
#include "support/ManualClock.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>

namespace vantrel {

void PrintTo(const AIFailure &failure, std::ostream *out);
void PrintTo(const Result<QString, AIFailure> &result, std::ostream *out);

namespace test {

/// Settings in memory, without an appearance.
class FakeSettingsStore final : public SettingsStoring
{
public:
    AIProviderConfig config{};

    [[nodiscard]] AIProviderConfig loadAIConfig() const override { return config; }
    void saveAIConfig(const AIProviderConfig &newConfig) override { config = newConfig; }
    [[nodiscard]] AppAppearance loadAppearance() const override { return AppAppearance::system; }
    void saveAppearance(AppAppearance) override {}
};

/// Keys in memory. Each read is logged ("read openAI") when it begins, and waits while the test
/// holds reads. Thread: any.
class FakeKeychainStore final : public KeychainStoring
{
public:
    void setKey(AIProvider provider, const QString &key);
    void holdReads();
    void releaseReads();
    [[nodiscard]] const CallLog &log() const { return m_log; }

    [[nodiscard]] std::optional<QString> apiKey(AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> saveAPIKey(const QString &key,
                                                         AIProvider provider) override;
    [[nodiscard]] Result<void, KeychainError> deleteAPIKey(AIProvider provider) override;

private:
    CallLog m_log{};
    std::mutex m_mutex{};
    std::condition_variable m_released{};
    std::map<AIProvider, QString> m_keys{}; ///< Guarded by `m_mutex`.
    bool m_isHolding = false;               ///< Guarded by `m_mutex`.
};

/// What has come of a stream.
template<typename Value>
struct Received
{
    QList<Value> values{};
    std::optional<AIFailure> error{};
    bool isOver = false;

    bool operator==(const Received &) const = default;
};

/// The service over real sockets, with settings and keys in memory. The provider is `custom`
/// without a key, at the scripted server.
class AIServiceFixture : public testing::Test
{
protected:
    using Text = Result<QString, AIFailure>;

    AIServiceFixture();

    void useProvider(AIProvider provider);
    void useKey(AIProvider provider, const QString &key);

    static AIServiceError error(AIServiceError::Case kind);
    static AIServiceError requestFailed(const QString &message);

    /// The event stream of these deltas, without an end mark.
    static QByteArray events(const QStringList &deltas);

    /// The body of a whole reply with this text.
    static QByteArray reply(const QString &text);

    /// Runs a task to its end.
    template<typename Value>
    Value waitFor(Task<Value> task)
    {
        std::optional<Value> value;
        const Job job(keep(std::move(task), &value));
        spinUntil([&] { return value.has_value(); });
        return std::move(*value);
    }

    template<typename Value>
    static Task<> keep(Task<Value> task, std::optional<Value> *kept)
    {
        Value value = co_await std::move(task);
        kept->emplace(std::move(value));
    }

    template<typename Value>
    Received<Value> waitFor(Stream<Value, AIFailure> stream)
    {
        Received<Value> received;
        const Job job(receive(std::move(stream), &received));
        spinUntil([&] { return received.isOver; });
        return received;
    }

    template<typename Value>
    static Task<> receive(Stream<Value, AIFailure> stream, Received<Value> *received)
    {
        while (const auto item = co_await stream.next()) {
            if (*item) {
                received->values.append(**item);
            } else {
                received->error = item->error();
            }
        }
        received->isOver = true;
    }

    /// A plain streamed answer to one question.
    TextStream chat() { return m_service.chatAboutHunk(m_path, m_hunk, {}); }
    ExplanationStream explain() { return m_service.explainHunk(m_path, m_hunk, QString()); }
    Task<Text> summarize() { return m_service.summarizeFile(m_path, m_hunk); }

    const QString m_path = QStringLiteral("src/a.cpp");
    const QString m_hunk = QStringLiteral("-a\n+b");
    ScriptedServer m_server{};
    ManualClock m_clock{};
    NetworkHttpLoader m_loader{m_clock};
    NotificationCenter m_center{};
    FakeSettingsStore m_settings{};
    std::shared_ptr<FakeKeychainStore> m_keychain = std::make_shared<FakeKeychainStore>();
    KeychainWorker m_keychainWorker{m_keychain, m_clock};
    OpenAICompatibleAIService m_service{m_loader, m_settings, m_keychainWorker, m_center};
    int m_setupRequiredCount = 0;
    NotificationCenter::Token m_setupRequired{};
};

} // namespace test
} // namespace vantrel
