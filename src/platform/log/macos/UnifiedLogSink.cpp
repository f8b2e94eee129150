// The unified log behind `LogSink`; chosen by CMake on Apple systems.

#include "platform/log/LogSink.h"
#include "platform/log/LogText.h"
#include "platform/log/StandardError.h"

#include <QHash>

#include <os/log.h>

namespace vantrel {

namespace {

os_log_type_t logType(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return OS_LOG_TYPE_DEBUG;
    case QtInfoMsg:
    case QtWarningMsg:
        return OS_LOG_TYPE_DEFAULT;
    case QtCriticalMsg:
        return OS_LOG_TYPE_ERROR;
    case QtFatalMsg:
        return OS_LOG_TYPE_FAULT;
    }
    Q_UNREACHABLE();
}

/// Everything goes to the unified log, and to a terminal if somebody sits there.
class UnifiedLogSink final : public LogSink
{
public:
    void write(const LogEntry &entry) override
    {
        const QByteArray own = ownCategory(entry);
        const QByteArray category = own.isEmpty() ? entry.category : own;
        os_log_t &log = m_logs[category];
        if (log == nullptr) {
            log = os_log_create(logSubsystem, category.constData());
        }
        const QByteArray message = entry.message.toUtf8();
        os_log_with_type(log, logType(entry.type), "%{public}s", message.constData());
        if (m_isTerminal) {
            writeToStandardError(entry);
        }
    }

private:
    QHash<QByteArray, os_log_t> m_logs{}; ///< Each lives as long as the process.
    bool m_isTerminal = isStandardErrorTerminal();
};

} // namespace

std::unique_ptr<LogSink> systemLogSink()
{
    return std::make_unique<UnifiedLogSink>();
}

} // namespace vantrel
