// The journal of systemd, and standard error, behind `LogSink`.

#include "platform/log/LogSink.h"
#include "platform/log/LogText.h"
#include "platform/log/StandardError.h"

#include <QList>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

// The places in this file tell nobody where a message comes from.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

#include <syslog.h>

namespace vantrel {

namespace {

int priority(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return LOG_DEBUG;
    case QtInfoMsg:
        return LOG_INFO;
    case QtWarningMsg:
        return LOG_WARNING;
    case QtCriticalMsg:
        return LOG_ERR;
    case QtFatalMsg:
        return LOG_CRIT;
    }
    Q_UNREACHABLE();
}

/// Whether standard error is the stream that the journal gave to this process.
bool isStandardErrorJournal()
{
    struct stat file{};
    return ::fstat(STDERR_FILENO, &file) == 0 &&
           qgetenv("JOURNAL_STREAM") ==
               QByteArray::number(file.st_dev) + ':' + QByteArray::number(file.st_ino);
}

/// Whether the entry was sent, or there is no journal. A datagram: a journal that is not there
/// takes no time, one that does not read what it has makes the call wait.
bool sendToJournal(const LogEntry &entry)
{
    QList<QByteArray> fields{
        "MESSAGE=" + entry.message.toUtf8(),
        "PRIORITY=" + QByteArray::number(priority(entry.type)),
        "SYSLOG_IDENTIFIER=" + QByteArray(logIdentifier),
        "QT_CATEGORY=" + entry.category,
    };
    const QByteArray category = ownCategory(entry);
    if (!category.isEmpty()) {
        fields += {"VANTREL_SUBSYSTEM=" + QByteArray(logSubsystem), "VANTREL_CATEGORY=" + category};
    }
    std::vector<iovec> parts;
    for (QByteArray &field : fields) {
        parts.push_back({field.data(), std::size_t(field.size())});
    }
    return ::sd_journal_sendv(parts.data(), int(parts.size())) == 0;
}

/// A terminal is for whoever sits there. Where standard error leads to the journal, the entries go
/// there with their fields instead of as lines. Anything else, a file or a pipe, gets lines, and
/// the journal the entries too.
class JournalSink final : public LogSink
{
public:
    void write(const LogEntry &entry) override
    {
        const bool isJournaled = !m_isTerminal && sendToJournal(entry);
        if (!m_isJournal || !isJournaled) {
            writeToStandardError(entry);
        }
    }

private:
    bool m_isTerminal = isStandardErrorTerminal();
    bool m_isJournal = isStandardErrorJournal();
};

} // namespace

std::unique_ptr<LogSink> systemLogSink()
{
    return std::make_unique<JournalSink>();
}

} // namespace vantrel
