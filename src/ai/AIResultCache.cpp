#include "ai/AIResultCache.h"

#include "platform/jobs/RunQueue.h"

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int maxPromptLines = 40;

template<typename Key, typename Value>
std::optional<Value> find(const QHash<Key, Value> &values, const Key &key)
{
    VANTREL_ASSERT_UI_THREAD();
    const auto found = values.constFind(key);
    return found == values.cend() ? std::nullopt : std::optional<Value>(*found);
}

/// Where the text's line feed number `count` stands, or -1 when it has fewer.
qsizetype lineFeed(const QString &text, int count)
{
    qsizetype position = -1;
    for (int number = 0; number < count; ++number) {
        position = text.indexOf(u'\n', position + 1);
        if (position < 0) {
            break;
        }
    }
    return position;
}

} // namespace

std::optional<QString> AIResultCache::fileSummary(const FileSummaryKey &key) const
{
    return find(m_fileSummaries, key);
}

void AIResultCache::setFileSummary(const FileSummaryKey &key, const QString &summary)
{
    VANTREL_ASSERT_UI_THREAD();
    m_fileSummaries.insert(key, summary);
}

std::optional<HunkExplanation> AIResultCache::hunkExplanation(const HunkKey &key) const
{
    return find(m_hunkExplanations, key);
}

void AIResultCache::setHunkExplanation(const HunkKey &key, const HunkExplanation &explanation)
{
    VANTREL_ASSERT_UI_THREAD();
    m_hunkExplanations.insert(key, explanation);
}

std::optional<PersistedChatThread> AIResultCache::chatThread(const HunkKey &key) const
{
    return find(m_chatThreads, key);
}

void AIResultCache::setChatThread(const HunkKey &key, const PersistedChatThread &thread)
{
    VANTREL_ASSERT_UI_THREAD();
    m_chatThreads.insert(key, thread);
}

bool AIResultCache::hasChangesetSummary(const ChangesetKey &key) const
{
    VANTREL_ASSERT_UI_THREAD();
    return m_changesetSummaries.contains(key);
}

std::optional<QString> AIResultCache::finishedChangesetSummary(const ChangesetKey &key) const
{
    VANTREL_ASSERT_UI_THREAD();
    const auto found = m_changesetSummaries.constFind(key);
    return found == m_changesetSummaries.cend() ? std::nullopt : found->value();
}

Task<QString> AIResultCache::changesetSummary(const ChangesetKey &key, Task<QString> producer)
{
    VANTREL_ASSERT_UI_THREAD();
    auto found = m_changesetSummaries.constFind(key);
    if (found == m_changesetSummaries.cend()) {
        found = m_changesetSummaries.insert(key, SharedJob<QString>(std::move(producer)));
    }
    return found->result();
}

QString AIResultCache::promptText(const QString &path, const QString &diffText) const
{
    if (const auto summary = fileSummary({path, diffText})) {
        return *summary;
    }
    const qsizetype end = lineFeed(diffText, maxPromptLines);
    return end < 0 ? diffText : diffText.first(end) + u"\n… (truncated)"_s;
}

} // namespace vantrel
