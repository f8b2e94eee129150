#include "support/FakeChatHistory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

FakeChatHistory::FakeChatHistory(CallLog &log)
    : m_log(log)
{}

void FakeChatHistory::store(const PersistedChatThread &thread)
{
    m_threads.append(thread);
}

void FakeChatHistory::letGo()
{
    m_isLoaded = true;
    m_waiters.wakeAll();
}

Task<> FakeChatHistory::whenLoaded()
{
    while (!m_isLoaded) {
        co_await m_waiters.wait();
    }
}

std::optional<PersistedChatThread> FakeChatHistory::thread(const QString &filePath,
                                                           const QString &diffText) const
{
    EXPECT_TRUE(m_isLoaded) << "asked before the history was loaded";
    const auto found = std::find_if(m_threads.cbegin(), m_threads.cend(), [&](const auto &thread) {
        return thread.filePath == filePath && thread.diffText == diffText;
    });
    return found == m_threads.cend() ? std::nullopt : std::optional(*found);
}

QHash<QString, HunkExplanation> FakeChatHistory::explanations(const QString &filePath) const
{
    EXPECT_TRUE(m_isLoaded) << "asked before the history was loaded";
    QHash<QString, HunkExplanation> explanations;
    for (const PersistedChatThread &thread : m_threads) {
        if (thread.filePath == filePath && thread.explanation) {
            explanations.insert(thread.diffText, *thread.explanation);
        }
    }
    return explanations;
}

void FakeChatHistory::save(const QString &filePath, const QString &diffText,
                           const QList<ChatMessage> &messages,
                           const QStringList &suggestedQuestions,
                           const std::optional<HunkExplanation> &explanation)
{
    const auto stored = thread(filePath, diffText);
    m_threads.removeIf([&](const PersistedChatThread &thread) {
        return thread.filePath == filePath && thread.diffText == diffText;
    });
    PersistedChatThread saved{filePath, diffText, messages, suggestedQuestions, {}, explanation};
    if (!explanation && stored) {
        saved.explanation = stored->explanation;
    }
    m_threads.prepend(saved);
    m_log.append(u"save %1: %2 messages"_s.arg(filePath).arg(messages.size()));
}

} // namespace vantrel::test
