#pragma once

namespace vantrel {

/// Takes every message of Qt's logging to the system's log, or to standard error. Made once, before
/// anything logs.
///
/// Logging never waits: messages are written by a thread of their own. While nobody takes them, a
/// thousand wait; those beyond are lost, and their number is logged in their place. Only a
/// fatal message, after which the process aborts, and the end of this object wait until everything
/// is written, for two seconds at most. What a crash follows at once may be lost.
class SystemLog final
{
public:
    SystemLog();
    SystemLog(const SystemLog &) = delete;
    SystemLog &operator=(const SystemLog &) = delete;

    /// Messages are taken on, since some come until the process has ended.
    ~SystemLog();
};

} // namespace vantrel
