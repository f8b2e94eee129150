#include "persistence/ChatThreads.h"

#include <algorithm>
#include <utility>

namespace vantrel {

bool isSamePair(const PersistedChatThread &thread, const QString &filePath, const QString &diffText)
{
    return thread.filePath == filePath && thread.diffText == diffText;
}

QList<PersistedChatThread> newestFirst(QList<PersistedChatThread> threads)
{
    std::stable_sort(threads.begin(), threads.end(),
                     [](const PersistedChatThread &left, const PersistedChatThread &right) {
                         return left.lastUpdated > right.lastUpdated;
                     });
    return threads;
}

std::optional<PersistedChatThread> threadOfPair(const QList<PersistedChatThread> &threads,
                                                const QString &filePath, const QString &diffText)
{
    const auto found =
        std::find_if(threads.cbegin(), threads.cend(), [&](const PersistedChatThread &thread) {
            return isSamePair(thread, filePath, diffText);
        });
    return found == threads.cend() ? std::nullopt : std::optional(*found);
}

QHash<QString, HunkExplanation> explanationsOfFile(const QList<PersistedChatThread> &threads,
                                                   const QString &filePath)
{
    QHash<QString, HunkExplanation> explanations;
    for (const PersistedChatThread &thread : threads) {
        if (thread.filePath == filePath && thread.explanation) {
            explanations.insert(thread.diffText, *thread.explanation);
        }
    }
    return explanations;
}

QList<PersistedChatThread> withSaved(QList<PersistedChatThread> threads, PersistedChatThread saved,
                                     qsizetype maxThreads)
{
    const auto stored = threadOfPair(threads, saved.filePath, saved.diffText);
    if (stored && !saved.explanation) {
        saved.explanation = stored->explanation;
    }
    threads.removeIf([&](const PersistedChatThread &thread) {
        return isSamePair(thread, saved.filePath, saved.diffText);
    });
    threads.prepend(std::move(saved));
    if (threads.size() > maxThreads) {
        threads.resize(maxThreads);
    }
    return threads;
}

} // namespace vantrel
