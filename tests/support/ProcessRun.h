#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryFile>

#include <sys/types.h>

namespace vantrel::test {

/// What a process has left.
struct ProcessRun
{
    int exitCode = -1; ///< -1 when it crashed, did not start, or hung and was ended.
    QByteArray output{};
    QByteArray errors{};
    int signal = 0; ///< The one that ended it; 0 when it exited.
};

/// A child process whose output goes to files. Not a QProcess, which shares this process's memory
/// with the child for a moment; the thread sanitizer does not survive that.
class ChildProcess final
{
public:
    /// `outputHandle` is where its standard output goes instead of the file, if it is one.
    explicit ChildProcess(
        const QString &program, const QStringList &arguments,
        const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment(),
        int outputHandle = -1);
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;
    ~ChildProcess(); ///< Ends it at once.

    /// Its number in the system.
    [[nodiscard]] pid_t id() const { return m_process; }

    void write(const QByteArray &input);
    void closeInput();

    /// What it has written to standard error so far.
    [[nodiscard]] QByteArray errorsSoFar() const;

    [[nodiscard]] bool hasEnded() const;

    /// Waits for the end. A process that takes longer than `limitSeconds` counts as hanging.
    [[nodiscard]] ProcessRun waitForEnd(int limitSeconds = 20);

private:
    QTemporaryFile m_output{};
    QTemporaryFile m_errors{};
    int m_input = -1;
    pid_t m_process = -1;
};

/// Runs a program to its end, at most `ChildProcess`'s limit.
[[nodiscard]] ProcessRun
run(const QString &program, const QStringList &arguments, const QByteArray &input = {},
    const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

} // namespace vantrel::test
