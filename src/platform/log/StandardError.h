#pragma once

#include "platform/log/LogEntry.h"

namespace vantrel {

/// Whether somebody reads standard error in a terminal.
[[nodiscard]] bool isStandardErrorTerminal();

/// Writes the entry as one line. Waits while the reader does not read; what cannot be written is
/// dropped. Thread: one on which SIGPIPE is blocked.
void writeToStandardError(const LogEntry &entry);

} // namespace vantrel
