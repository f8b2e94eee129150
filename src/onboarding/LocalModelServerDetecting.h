#pragma once

#include "onboarding/LocalModelServer.h"
#include "onboarding/LocalModelServerStatus.h"
#include "platform/jobs/Task.h"

#include <QMap>

namespace vantrel {

using LocalModelServerStatuses = QMap<LocalModelServer, LocalModelServerStatus>;

/// Finds out which model servers run on this machine. Thread: interface.
class LocalModelServerDetecting
{
public:
    LocalModelServerDetecting() = default;
    LocalModelServerDetecting(const LocalModelServerDetecting &) = delete;
    LocalModelServerDetecting &operator=(const LocalModelServerDetecting &) = delete;
    virtual ~LocalModelServerDetecting() = default;

    /// The status of every server. Never fails.
    virtual Task<LocalModelServerStatuses> detectAll() = 0;
};

} // namespace vantrel
