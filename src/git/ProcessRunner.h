#pragma once

#include "git/ChildCommand.h"
#include "git/ProcessRunning.h"

namespace vantrel {

/// Runs real child processes, through `env` and so on the inherited search path and environment.
/// Stateless. Thread: any but the interface's, since `run` and `capture` block.
class ProcessRunner final : public ProcessRunning
{
public:
    [[nodiscard]] Result<TextSlice, ProcessFailure>
    run(const QString &command, const QStringList &arguments, const QUrl &directory) const override;

    /// The same with `variables` beside the inherited environment, or in its place.
    [[nodiscard]] Result<TextSlice, ProcessFailure>
    runWith(const QList<EnvironmentVariable> &variables, const QString &command,
            const QStringList &arguments, const QUrl &directory) const;

    /// The standard output as it is, whatever its bytes; fails as `run` does.
    [[nodiscard]] Result<QByteArray, ProcessFailure> capture(const ChildCommand &command) const;
};

} // namespace vantrel
