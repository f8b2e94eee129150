#pragma once

#include "git/ProcessRunning.h"

namespace vantrel {

/// Runs real child processes, through `env` and so on the inherited search path and environment.
/// Stateless. Thread: any but the interface's, since `run` blocks.
class ProcessRunner final : public ProcessRunning
{
public:
    [[nodiscard]] Result<TextSlice, ProcessFailure>
    run(const QString &command, const QStringList &arguments, const QUrl &directory) const override;
};

} // namespace vantrel
