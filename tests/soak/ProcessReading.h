#pragma once

#include <QStringList>

#include <sys/types.h>

namespace vantrel::test {

/// What a running process holds, as the system tells.
struct ProcessReading
{
    qint64 residentBytes = 0;
    int threads = 0;
    QStringList descriptors{}; ///< What each is, without the numbers that differ; sorted.
    int connections = 0;       ///< Those over TCP, which are not among the descriptors.
    QStringList children{};    ///< The names of the programs that it runs.
};

[[nodiscard]] ProcessReading readProcess(pid_t process);

} // namespace vantrel::test
