#pragma once

#include "platform/log/LogEntry.h"

#include <QByteArray>
#include <QString>

namespace vantrel {

/// How the application is called in the log.
inline constexpr char logIdentifier[] = "vantrel";

/// What the categories of this application's own messages begin with, before a full stop.
inline constexpr char logSubsystem[] = "com.orbisk.app";

/// `message` as one line that can be shown anywhere, of 4,096 characters at most. Messages may hold
/// text from outside: whatever would begin a line, steer a terminal or turn the direction of the
/// text, and halves of surrogate pairs, are written out as `\n` or `\u{1b}`; line feeds at the end
/// are left out. Thread: any.
[[nodiscard]] QString logText(const QString &message);

/// The category's name within this application's subsystem; empty for a category of another's.
[[nodiscard]] QByteArray ownCategory(const LogEntry &entry);

/// The entry for people: the application, the category if it tells anything, and the message, with
/// a line feed at the end.
[[nodiscard]] QByteArray logLine(const LogEntry &entry);

} // namespace vantrel
