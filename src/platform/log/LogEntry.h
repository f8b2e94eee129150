#pragma once

#include <QByteArray>
#include <QString>

namespace vantrel {

/// One message on its way to the system's log.
struct LogEntry
{
    QtMsgType type = QtInfoMsg;
    QByteArray category{}; ///< The whole name of the logging category.
    QString message{};     ///< One line, see `logText`.

    bool operator==(const LogEntry &) const = default;
};

} // namespace vantrel
