#pragma once

#include "ai/ChangesetKey.h"
#include "platform/jobs/Task.h"

#include <QList>
#include <QString>

#include <memory>

namespace vantrel {

class AIResultCache;
class AIWorker;
class KeychainAccessNotice;
struct FileChange;

/// What a narrative is asked about. Making one writes every line of the change set, so it is made
/// on a worker.
struct Changeset
{
    explicit Changeset(const QList<FileChange> &files);
    Changeset() = default;

    QList<ChangesetKey::Entry> entries{}; ///< In list order; files without hunks are none.
    ChangesetKey key{};
};

/// The narrative of a change set, asked for at most once for the life of the cache, whoever waits
/// for it. Empty when there is nothing to tell about and when the model could not be asked, so that
/// hunks are explained without it. The worker and the notice must outlive the cache.
Task<QString> changesetNarrative(std::shared_ptr<AIResultCache> cache, Changeset changeset,
                                 AIWorker *aiWorker, KeychainAccessNotice *keychainAccessNotice);

} // namespace vantrel
