#include "support/ProcessRun.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

// glibc 2.36 does not say in this header that its functions are C.
extern "C" {
#include <sys/pidfd.h>
}

namespace vantrel::test {

namespace {

/// Texts as C wants them, with the null at the end.
class Texts
{
public:
    explicit Texts(const QStringList &texts)
    {
        for (const QString &text : texts) {
            m_bytes.push_back(text.toUtf8());
        }
        for (QByteArray &bytes : m_bytes) {
            m_pointers.push_back(bytes.data());
        }
        m_pointers.push_back(nullptr);
    }

    [[nodiscard]] char *const *pointers() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_bytes{};
    std::vector<char *> m_pointers{};
};

QByteArray contents(QTemporaryFile &file)
{
    file.seek(0);
    return file.readAll();
}

} // namespace

ChildProcess::ChildProcess(const QString &program, const QStringList &arguments,
                           const QProcessEnvironment &environment, int outputHandle)
{
    std::array<int, 2> input{};
    if (!m_output.open() || !m_errors.open() || ::pipe2(input.data(), O_CLOEXEC) != 0) {
        qFatal("no files for a child process");
    }
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, outputHandle < 0 ? m_output.handle() : outputHandle,
                                     STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, m_errors.handle(), STDERR_FILENO);
    const Texts command(QStringList{program} + arguments);
    const Texts variables(environment.toStringList());
    const int error = ::posix_spawnp(&m_process, program.toUtf8().constData(), &actions, nullptr,
                                     command.pointers(), variables.pointers());
    posix_spawn_file_actions_destroy(&actions);
    ::close(input[0]);
    m_input = input[1];
    if (error != 0) {
        qFatal("%s does not start", qPrintable(program));
    }
}

ChildProcess::~ChildProcess()
{
    closeInput();
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
}

void ChildProcess::write(const QByteArray &input)
{
    // What tests write fits into a pipe.
    if (::write(m_input, input.constData(), std::size_t(input.size())) != input.size()) {
        qFatal("a child process takes no input");
    }
}

void ChildProcess::closeInput()
{
    if (m_input >= 0) {
        ::close(std::exchange(m_input, -1));
    }
}

QByteArray ChildProcess::errorsSoFar() const
{
    // By a handle of its own, since the other's place in the file is the process's too.
    QFile errors(m_errors.fileName());
    return errors.open(QIODevice::ReadOnly) ? errors.readAll() : QByteArray();
}

bool ChildProcess::hasEnded() const
{
    siginfo_t info{};
    ::waitid(P_PID, id_t(m_process), &info, WEXITED | WNOHANG | WNOWAIT);
    return info.si_pid == m_process;
}

ProcessRun ChildProcess::waitForEnd(int limitSeconds)
{
    ProcessRun result;
    const int handle = ::pidfd_open(m_process, 0);
    pollfd end{handle, POLLIN, 0};
    const bool hasEnded = ::poll(&end, 1, limitSeconds * 1000) == 1;
    ::close(handle);
    if (!hasEnded) {
        ::kill(m_process, SIGKILL);
    }
    int status = 0;
    ::waitpid(std::exchange(m_process, -1), &status, 0);
    if (WIFEXITED(status)) {
        result.exitCode = WEXITSTATUS(status);
    } else {
        result.signal = WTERMSIG(status);
    }
    result.output = contents(m_output);
    result.errors = contents(m_errors) + (hasEnded ? "" : "(hung)");
    return result;
}

ProcessRun run(const QString &program, const QStringList &arguments, const QByteArray &input,
               const QProcessEnvironment &environment)
{
    ChildProcess process(program, arguments, environment);
    process.write(input);
    process.closeInput();
    return process.waitForEnd();
}

} // namespace vantrel::test
