// A child process with two pipes, read side by side to their ends before the child is waited for: a
// child that fills a pipe that nobody reads would block for ever, and one that hands its pipes to a
// grandchild has not said everything when it exits.

#include "git/ProcessRunner.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char envPath[] = "/usr/bin/env";
constexpr std::size_t readSize = 65'536;

/// An open file descriptor, closed with its owner.
class Descriptor
{
public:
    Descriptor() = default;
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { close(); }

    void open(int descriptor) { m_descriptor = descriptor; }
    void close()
    {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
            m_descriptor = -1;
        }
    }
    [[nodiscard]] int get() const { return m_descriptor; }
    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

private:
    int m_descriptor = -1;
};

/// A pipe whose ends no other child process inherits.
struct Pipe
{
    Descriptor readEnd{};
    Descriptor writeEnd{};

    [[nodiscard]] bool open()
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            return false;
        }
        readEnd.open(ends[0]);
        writeEnd.open(ends[1]);
        return true;
    }
};

class SpawnActions
{
public:
    SpawnActions() { ::posix_spawn_file_actions_init(&m_actions); }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&m_actions); }

    [[nodiscard]] posix_spawn_file_actions_t *get() { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/// The signals as a program expects to find them, whatever this process does with its own.
class SpawnAttributes
{
public:
    SpawnAttributes()
    {
        sigset_t defaults;
        ::sigemptyset(&defaults);
        for (const int signal : {SIGPIPE, SIGINT, SIGQUIT, SIGCHLD}) {
            ::sigaddset(&defaults, signal);
        }
        sigset_t unblocked;
        ::sigemptyset(&unblocked);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setsigdefault(&m_attributes, &defaults);
        ::posix_spawnattr_setsigmask(&m_attributes, &unblocked);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    SpawnAttributes(const SpawnAttributes &) = delete;
    SpawnAttributes &operator=(const SpawnAttributes &) = delete;
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&m_attributes); }

    [[nodiscard]] const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

PlatformError platformError(int errorNumber)
{
    return PlatformError{qt_error_string(errorNumber)};
}

struct Output
{
    Pipe pipe{};
    QByteArray bytes{};

    /// Takes what the pipe holds; closes it at its end.
    void readSome()
    {
        std::array<char, readSize> block; // Only what `read` filled of it is used.
        const ssize_t count = ::read(pipe.readEnd.get(), block.data(), block.size());
        if (count > 0) {
            bytes.append(block.data(), count);
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            pipe.readEnd.close();
        }
    }
};

void readToTheEnd(Output &first, Output &second)
{
    while (first.pipe.readEnd.isOpen() || second.pipe.readEnd.isOpen()) {
        // A closed descriptor is -1, which poll passes over.
        std::array<pollfd, 2> ends{pollfd{first.pipe.readEnd.get(), POLLIN, 0},
                                   pollfd{second.pipe.readEnd.get(), POLLIN, 0}};
        if (::poll(ends.data(), ends.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            // The child must find nobody to write to, or it would wait for a reader for ever.
            first.pipe.readEnd.close();
            second.pipe.readEnd.close();
            return;
        }
        if (ends[0].revents != 0) {
            first.readSome();
        }
        if (ends[1].revents != 0) {
            second.readSome();
        }
    }
}

/// Fails where the system keeps no status, which it does not while SIGCHLD is ignored: a status
/// made up would let a failed command pass for a good one.
Result<std::int32_t, PlatformError> waitForExit(pid_t child)
{
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return failure(platformError(errno));
        }
    }
    return WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
}

/// Pointers to texts as C wants them, with a null behind the last. The texts must outlive it.
QList<char *> pointers(QByteArrayList &texts)
{
    QList<char *> pointers;
    for (QByteArray &text : texts) {
        pointers.append(text.data());
    }
    pointers.append(nullptr);
    return pointers;
}

/// This process's environment with `variables` in it, as "name=value".
QByteArrayList environmentWith(const QList<EnvironmentVariable> &variables)
{
    QByteArrayList entries;
    for (char **inherited = environ; *inherited != nullptr; ++inherited) {
        const QByteArray entry(*inherited);
        const bool isReplaced =
            std::any_of(variables.cbegin(), variables.cend(), [&entry](const auto &variable) {
                return entry.startsWith(variable.name + '=');
            });
        if (!isReplaced) {
            entries.append(entry);
        }
    }
    for (const EnvironmentVariable &variable : variables) {
        entries.append(variable.name + '=' + variable.value);
    }
    return entries;
}

} // namespace

Result<TextSlice, ProcessFailure> ProcessRunner::run(const QString &command,
                                                     const QStringList &arguments,
                                                     const QUrl &directory) const
{
    return runWith({}, command, arguments, directory);
}

Result<TextSlice, ProcessFailure>
ProcessRunner::runWith(const QList<EnvironmentVariable> &variables, const QString &command,
                       const QStringList &arguments, const QUrl &directory) const
{
    ChildCommand child;
    child.words.append(command.toUtf8());
    for (const QString &argument : arguments) {
        child.words.append(argument.toUtf8());
    }
    child.folder = QFile::encodeName(directory.toLocalFile());
    child.variables = variables;
    auto output = capture(child);
    if (!output) {
        return failure(output.error());
    }
    return output->isValidUtf8() ? TextSlice::fromUtf8(std::move(*output)) : TextSlice();
}

Result<QByteArray, ProcessFailure> ProcessRunner::capture(const ChildCommand &command) const
{
    QByteArrayList words = QByteArrayList{envPath} + command.words;
    QByteArrayList environment = environmentWith(command.variables);
    const QList<char *> argv = pointers(words);
    const QList<char *> envp = pointers(environment);

    Output output;
    Output errors;
    if (!output.pipe.open() || !errors.pipe.open()) {
        return failure(ProcessFailure(platformError(errno)));
    }
    SpawnActions actions;
    const SpawnAttributes attributes;
    ::posix_spawn_file_actions_adddup2(actions.get(), output.pipe.writeEnd.get(), STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(actions.get(), errors.pipe.writeEnd.get(), STDERR_FILENO);
    ::posix_spawn_file_actions_addchdir_np(actions.get(), command.folder.constData());

    pid_t child = 0;
    const int refusal =
        ::posix_spawn(&child, envPath, actions.get(), attributes.get(), argv.data(), envp.data());
    if (refusal != 0) {
        return failure(ProcessFailure(platformError(refusal)));
    }
    output.pipe.writeEnd.close();
    errors.pipe.writeEnd.close();
    readToTheEnd(output, errors);
    const auto status = waitForExit(child);
    if (!status) {
        return failure(ProcessFailure(status.error()));
    }
    if (*status != 0) {
        ProcessRunnerError error;
        error.status = *status;
        error.message = errors.bytes.isValidUtf8()
                            ? TextSlice::fromUtf8(std::move(errors.bytes)).toString()
                            : u"Unknown error"_s;
        return failure(ProcessFailure(error));
    }
    return std::move(output.bytes);
}

} // namespace vantrel
