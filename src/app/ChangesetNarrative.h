#pragma once

#include "app/Changeset.h"
#include "platform/jobs/Task.h"

#include <QString>

#include <memory>

namespace vantrel {

class AIResultCache;
class AIWorker;
class KeychainAccessNotice;

/// The narrative of a change set, asked for at most once for the life of the cache, whoever waits
/// for it. Empty when there is nothing to tell about and when the model could not be asked, so that
/// hunks are explained without it. The worker and the notice must outlive the cache.
Task<QString> changesetNarrative(std::shared_ptr<AIResultCache> cache, Changeset changeset,
                                 AIWorker *aiWorker, KeychainAccessNotice *keychainAccessNotice);

} // namespace vantrel
