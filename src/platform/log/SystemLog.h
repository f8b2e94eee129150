#pragma once

namespace vantrel {

/// Takes every message of Qt's logging to the system's log, or to standard error, from now on. To
/// be called once, before anything logs.
///
/// Logging never waits: messages are written by a thread of their own. While nobody takes them, a
/// thousand wait; those beyond are lost, and their number is logged in their place. Only a fatal
/// message, after which the process aborts, and the end of the process by `exit` wait until
/// everything is written, for two seconds at most. What a crash follows at once may be lost.
void logToSystem();

} // namespace vantrel
