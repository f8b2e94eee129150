#include "platform/log/StandardError.h"

#include "platform/log/LogText.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace vantrel {

bool isStandardErrorTerminal()
{
    return ::isatty(STDERR_FILENO) == 1;
}

void writeToStandardError(const LogEntry &entry)
{
    QByteArray line = logLine(entry);
    while (!line.isEmpty()) {
        const ssize_t written = ::write(STDERR_FILENO, line.constData(), std::size_t(line.size()));
        if (written > 0) {
            line.remove(0, written);
        } else if (errno == EAGAIN) {
            // Somebody who shares it has made it so.
            pollfd room{STDERR_FILENO, POLLOUT, 0};
            ::poll(&room, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

} // namespace vantrel
