#include "persistence/ChatHistoryStore.h"

#include "models/PersistedChatThreadCoding.h"
#include "persistence/ChatThreads.h"
#include "persistence/StoredRecords.h"
#include "platform/UserDefaults.h"

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QString storageKey()
{
    return u"chatHistory"_s;
}

QList<PersistedChatThread> threadsIn(const QByteArray &stored)
{
    return newestFirst(recordsFromStoredForm(stored, persistedChatThreadFromJson));
}

} // namespace

ChatHistoryStore::ChatHistoryStore(UserDefaults &defaults, std::function<QDateTime()> now)
    : m_defaults(defaults)
    , m_now(std::move(now))
{}

QList<PersistedChatThread> ChatHistoryStore::threads() const
{
    return threadsIn(m_defaults.bytes(storageKey()).value_or(QByteArray()));
}

std::optional<PersistedChatThread> ChatHistoryStore::thread(const QString &filePath,
                                                            const QString &diffText) const
{
    return threadOfPair(threads(), filePath, diffText);
}

QHash<QString, HunkExplanation> ChatHistoryStore::explanations(const QString &filePath) const
{
    return explanationsOfFile(threads(), filePath);
}

void ChatHistoryStore::save(const QString &filePath, const QString &diffText,
                            const QList<ChatMessage> &messages,
                            const QStringList &suggestedQuestions,
                            const std::optional<HunkExplanation> &explanation)
{
    save(PersistedChatThread{filePath, diffText, messages, suggestedQuestions, m_now(),
                             explanation});
}

void ChatHistoryStore::save(const PersistedChatThread &saved)
{
    // The conversation goes on without its copy on the disk; the log tells of it.
    m_defaults.changeBytes(storageKey(), [&saved](const QByteArray &stored) {
        return storedForm(withSaved(threadsIn(stored), saved, maxPersistedThreads));
    });
}

} // namespace vantrel
