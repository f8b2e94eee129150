#pragma once

#include "persistence/ChatHistoryStoring.h"
#include "platform/jobs/WaiterList.h"
#include "support/CallLog.h"

namespace vantrel::test {

/// A history in memory, without limits. Each save is logged ("save src/a.cpp: 2 messages"). Loaded
/// from the start, unless a test holds it back. Thread: interface.
class FakeChatHistory final : public ChatHistoryStoring
{
public:
    /// `log` must outlive the fake.
    explicit FakeChatHistory(CallLog &log);

    /// Puts a thread there as if an earlier run had saved it.
    void store(const PersistedChatThread &thread);

    /// Keeps whoever waits for the history waiting, until it is let go.
    void holdBack() { m_isLoaded = false; }
    void letGo();

    [[nodiscard]] const QList<PersistedChatThread> &threads() const { return m_threads; }

    Task<> whenLoaded() override;
    std::optional<PersistedChatThread> thread(const QString &filePath,
                                              const QString &diffText) const override;
    QHash<QString, HunkExplanation> explanations(const QString &filePath) const override;
    void save(const QString &filePath, const QString &diffText, const QList<ChatMessage> &messages,
              const QStringList &suggestedQuestions,
              const std::optional<HunkExplanation> &explanation) override;

private:
    CallLog &m_log;
    QList<PersistedChatThread> m_threads{}; ///< Newest first.
    bool m_isLoaded = true;
    WaiterList m_waiters{};
};

} // namespace vantrel::test
