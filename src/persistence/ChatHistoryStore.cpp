#include "persistence/ChatHistoryStore.h"

#include "models/PersistedChatThreadCoding.h"
#include "persistence/ChatThreads.h"
#include "persistence/StoredRecords.h"
#include "platform/UserDefaults.h"

#include <QDebug>

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QString storageKey()
{
    return u"chatHistory"_s;
}

} // namespace

ChatHistoryStore::ChatHistoryStore(UserDefaults &defaults, std::function<QDateTime()> now)
    : m_defaults(defaults)
    , m_now(std::move(now))
{}

QList<PersistedChatThread> ChatHistoryStore::threads() const
{
    const QByteArray stored = m_defaults.bytes(storageKey()).value_or(QByteArray());
    return newestFirst(recordsFromStoredForm(stored, persistedChatThreadFromJson));
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
    const QByteArray form = storedForm(withSaved(threads(), saved, maxPersistedThreads));
    // The conversation goes on without its copy on the disk, and the next save tries again.
    if (const auto written = m_defaults.setBytes(storageKey(), form); !written) {
        qWarning("the chat history could not be saved: %s",
                 qPrintable(written.error().description()));
    }
}

} // namespace vantrel
