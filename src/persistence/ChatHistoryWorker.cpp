#include "persistence/ChatHistoryWorker.h"

#include "persistence/ChatThreads.h"
#include "platform/jobs/RunQueue.h"

#include <utility>
#include <variant>

namespace vantrel {

ChatHistoryWorker::ChatHistoryWorker(UserDefaults &defaults, std::function<QDateTime()> now)
    : m_store(defaults)
    , m_now(std::move(now))
{
    m_loading = Job(load());
}

ChatHistoryWorker::~ChatHistoryWorker()
{
    m_loading.cancel();
    m_writing.cancel();
    m_worker.reset();
    writeAll();
}

Task<> ChatHistoryWorker::whenLoaded()
{
    while (!m_isLoaded) {
        co_await m_loaded.wait();
    }
}

std::optional<PersistedChatThread> ChatHistoryWorker::thread(const QString &filePath,
                                                             const QString &diffText) const
{
    VANTREL_ASSERT_UI_THREAD();
    return threadOfPair(m_threads, filePath, diffText);
}

QHash<QString, HunkExplanation> ChatHistoryWorker::explanations(const QString &filePath) const
{
    VANTREL_ASSERT_UI_THREAD();
    return explanationsOfFile(m_threads, filePath);
}

void ChatHistoryWorker::save(const QString &filePath, const QString &diffText,
                             const QList<ChatMessage> &messages,
                             const QStringList &suggestedQuestions,
                             const std::optional<HunkExplanation> &explanation)
{
    VANTREL_ASSERT_UI_THREAD();
    const PersistedChatThread saved{filePath,           diffText, messages,
                                    suggestedQuestions, m_now(),  explanation};
    remember(saved);
    queue(saved);
    // What is saved before the history was read is written after that, so that it is known which
    // saves the history lacks.
    if (m_isLoaded && !m_writing.isActive()) {
        m_writing = Job(write());
    }
}

Task<> ChatHistoryWorker::load()
{
    auto read = [this](const WorkControl &) { return m_store.threads(); };
    auto reading = m_worker->run(std::move(read));
    QList<PersistedChatThread> stored = co_await std::move(reading);
    m_threads = std::move(stored);
    {
        const std::lock_guard lock(m_mutex);
        for (const PersistedChatThread &saved : m_unwritten) {
            remember(saved);
        }
    }
    m_isLoaded = true;
    m_writing = Job(write());
    m_loaded.wakeAll();
}

Task<> ChatHistoryWorker::write()
{
    // A save may come after the thread found nothing more to write, and before this is known here.
    while (hasUnwritten()) {
        auto drain = [this](const WorkControl &) {
            writeAll();
            return std::monostate();
        };
        auto draining = m_worker->run(std::move(drain));
        co_await std::move(draining);
    }
}

void ChatHistoryWorker::queue(PersistedChatThread saved)
{
    const std::lock_guard lock(m_mutex);
    // Only the save just before: to leave out an earlier one would change which threads the limit
    // drops in between, and with a dropped thread its explanation.
    if (!m_unwritten.empty() && isSamePair(m_unwritten.back(), saved.filePath, saved.diffText)) {
        if (!saved.explanation) {
            saved.explanation = m_unwritten.back().explanation;
        }
        m_unwritten.pop_back();
    }
    m_unwritten.push_back(std::move(saved));
}

void ChatHistoryWorker::remember(const PersistedChatThread &saved)
{
    // Sorted as it will be read: a clock that was set back puts a later save behind.
    m_threads =
        newestFirst(withSaved(std::move(m_threads), saved, ChatHistoryStore::maxPersistedThreads));
}

void ChatHistoryWorker::writeAll()
{
    while (const auto saved = takeUnwritten()) {
        m_store.save(*saved);
    }
}

bool ChatHistoryWorker::hasUnwritten()
{
    const std::lock_guard lock(m_mutex);
    return !m_unwritten.empty();
}

std::optional<PersistedChatThread> ChatHistoryWorker::takeUnwritten()
{
    const std::lock_guard lock(m_mutex);
    if (m_unwritten.empty()) {
        return std::nullopt;
    }
    std::optional<PersistedChatThread> saved(std::move(m_unwritten.front()));
    m_unwritten.pop_front();
    return saved;
}

} // namespace vantrel
