#pragma once

#include "persistence/ChatHistoryStore.h"
#include "persistence/ChatHistoryStoring.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/SerialWorker.h"
#include "platform/jobs/WaiterList.h"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace vantrel {

class UserDefaults;

/// The history that screens use: read once, on a thread of its own, and answered from memory. A
/// save counts at once and is written on that thread, in the order of the saves; one that the next
/// save of the same pair follows before it was begun is left out. Destroying the worker waits until
/// everything is written.
class ChatHistoryWorker final : public ChatHistoryStoring
{
public:
    /// Begins to read. `defaults` must outlive the worker. `now` tells the time of a save; it is
    /// called on the interface thread.
    explicit ChatHistoryWorker(UserDefaults &defaults,
                               std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc);
    ~ChatHistoryWorker() override;

    Task<> whenLoaded() override;
    [[nodiscard]] std::optional<PersistedChatThread> thread(const QString &filePath,
                                                            const QString &diffText) const override;
    [[nodiscard]] QHash<QString, HunkExplanation>
    explanations(const QString &filePath) const override;
    void save(const QString &filePath, const QString &diffText, const QList<ChatMessage> &messages,
              const QStringList &suggestedQuestions,
              const std::optional<HunkExplanation> &explanation) override;

private:
    Task<> load();
    Task<> write();
    void queue(PersistedChatThread saved);
    void remember(const PersistedChatThread &saved);

    /// Writes everything that waits, including what comes meanwhile. Thread: the worker's, or any
    /// once that has ended.
    void writeAll();
    [[nodiscard]] bool hasUnwritten();
    [[nodiscard]] std::optional<PersistedChatThread> takeUnwritten();

    ChatHistoryStore m_store; ///< Used where `writeAll` is.
    std::function<QDateTime()> m_now;
    QList<PersistedChatThread> m_threads{}; ///< As they will be stored, newest first.
    bool m_isLoaded = false;
    WaiterList m_loaded{};
    std::mutex m_mutex{};
    std::deque<PersistedChatThread> m_unwritten{}; ///< Guarded by `m_mutex`. In order of saving.
    std::unique_ptr<SerialWorker> m_worker = std::make_unique<SerialWorker>();
    Job m_loading{};
    Job m_writing{};
};

} // namespace vantrel
