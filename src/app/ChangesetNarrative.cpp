#include "app/ChangesetNarrative.h"

#include "ai/AIResultCache.h"
#include "ai/AIWorker.h"
#include "persistence/KeychainAccessNotice.h"

#include <utility>

namespace vantrel {

namespace {

Task<QString> produceNarrative(AIResultCache *cache, QList<ChangesetKey::Entry> entries,
                               AIWorker *aiWorker, KeychainAccessNotice *keychainAccessNotice)
{
    // Before the first wait, since only until then a waiter is sure to hold the cache.
    QList<ChangesetEntry> prompt;
    for (const ChangesetKey::Entry &entry : std::as_const(entries)) {
        prompt.append({entry.path, cache->promptText(entry.path, entry.diffText)});
    }
    co_await keychainAccessNotice->showIfNeededAndWait();
    auto asking = aiWorker->summarizeChangeset(std::move(prompt));
    const auto narrative = co_await std::move(asking);
    co_return narrative.value_or(QString());
}

} // namespace

Task<QString> changesetNarrative(std::shared_ptr<AIResultCache> cache, Changeset changeset,
                                 AIWorker *aiWorker, KeychainAccessNotice *keychainAccessNotice)
{
    if (changeset.entries.isEmpty()) {
        co_return QString();
    }
    Task<QString> producer =
        produceNarrative(cache.get(), changeset.entries, aiWorker, keychainAccessNotice);
    Task<QString> narrative = cache->changesetSummary(changeset.key, std::move(producer));
    co_return co_await std::move(narrative);
}

} // namespace vantrel
