#pragma once

#include "platform/log/LogEntry.h"

#include <memory>

namespace vantrel {

/// Where the entries of the log go. Thread: any, one call at a time; a call may wait for as long as
/// whoever takes the entries does.
class LogSink
{
public:
    LogSink() = default;
    LogSink(const LogSink &) = delete;
    LogSink &operator=(const LogSink &) = delete;
    virtual ~LogSink() = default;

    virtual void write(const LogEntry &entry) = 0;
};

/// Standard error, the log of this operating system, or both: whichever is read by somebody, as
/// this process was started.
[[nodiscard]] std::unique_ptr<LogSink> systemLogSink();

} // namespace vantrel
