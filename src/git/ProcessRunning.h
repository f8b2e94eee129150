#pragma once

#include "git/ProcessRunnerError.h"
#include "models/TextSlice.h"
#include "platform/Result.h"

#include <QString>
#include <QStringList>
#include <QUrl>

namespace vantrel {

/// Runs command-line tools as child processes. Thread: any but the interface's, since `run` blocks.
class ProcessRunning
{
public:
    ProcessRunning() = default;
    ProcessRunning(const ProcessRunning &) = delete;
    ProcessRunning &operator=(const ProcessRunning &) = delete;
    virtual ~ProcessRunning() = default;

    /// The standard output of `command`, looked up on the search path and run in `directory` with
    /// `arguments` as separate words; empty when it is not valid UTF-8. Blocks until the child has
    /// ended.
    [[nodiscard]] virtual Result<TextSlice, ProcessFailure>
    run(const QString &command, const QStringList &arguments, const QUrl &directory) const = 0;
};

} // namespace vantrel
