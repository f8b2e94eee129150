#include "git/ProcessRunner.h"

#include "EnvironmentRestorer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <pthread.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using Output = Result<TextSlice, ProcessFailure>;

Output succeeded(const QByteArray &output)
{
    return TextSlice::fromUtf8(output);
}

Output exited(std::int32_t status, const QString &message)
{
    ProcessRunnerError error;
    error.status = status;
    error.message = message;
    return failure(ProcessFailure(error));
}

Output refused(const QString &message)
{
    return failure(ProcessFailure(PlatformError{message}));
}

/// How often lines of `text` begin with `start`.
qsizetype linesThatBegin(const QString &start, const QString &text)
{
    const QStringList lines = text.split(u'\n');
    return std::count_if(lines.cbegin(), lines.cend(),
                         [&](const QString &line) { return line.startsWith(start); });
}

/// The pipes that a child of this process finds open, but for those that every child gets.
qsizetype inheritedPipes()
{
    qsizetype count = 0;
    for (const QFileInfo &entry : QDir(u"/proc/self/fd"_s).entryInfoList(QDir::System)) {
        const int descriptor = entry.fileName().toInt();
        const int flags = ::fcntl(descriptor, F_GETFD);
        const bool isPipe = entry.symLinkTarget().contains(u"pipe:"_s);
        const bool isInherited = flags >= 0 && (flags & FD_CLOEXEC) == 0;
        const bool isReplaced = descriptor == STDOUT_FILENO || descriptor == STDERR_FILENO;
        count += isPipe && isInherited && !isReplaced ? 1 : 0;
    }
    return count;
}

qsizetype openDescriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size();
}

class ProcessRunnerTest : public testing::Test
{
protected:
    [[nodiscard]] Output run(const QString &command, const QStringList &arguments = {}) const
    {
        return m_runner.run(command, arguments, QUrl::fromLocalFile(m_folder.path()));
    }

    /// What the shell makes of `script`, with `words` as its arguments.
    [[nodiscard]] Output shell(const QString &script, const QStringList &words = {}) const
    {
        return run(u"sh"_s, QStringList{u"-c"_s, script, u"sh"_s} + words);
    }

    test::EnvironmentRestorer m_environment;
    QTemporaryDir m_folder;
    ProcessRunner m_runner;
};

TEST_F(ProcessRunnerTest, ReturnsTheStandardOutputUntrimmed)
{
    EXPECT_EQ(shell(u"printf ' a\\n\\n'"_s), succeeded(" a\n\n"));
}

TEST_F(ProcessRunnerTest, ReturnsAnEmptyOutput)
{
    EXPECT_EQ(run(u"true"_s), succeeded({}));
}

TEST_F(ProcessRunnerTest, HandsEachArgumentOverAsItIs)
{
    const QStringList words{u"a b"_s,
                            u"it's \"so\""_s,
                            u"line\nfeed\t"_s,
                            u""_s,
                            u"$HOME *"_s,
                            u"-x=y"_s,
                            QStringLiteral("\u00e9\u6f22\U0001F600"),
                            QStringLiteral("\uFEFFmark")};

    const Output output = shell(u"printf '%s|' \"$@\""_s, words);

    EXPECT_EQ(output, succeeded((words.join(u'|') + u'|').toUtf8()));
}

TEST_F(ProcessRunnerTest, FindsTheCommandOnTheSearchPathOfTheMoment)
{
    QFile tool(m_folder.filePath(u"vantrel-tool"_s));
    ASSERT_TRUE(tool.open(QFile::WriteOnly));
    tool.write("#!/bin/sh\necho found\n");
    tool.close();
    ASSERT_TRUE(tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(m_folder.path()));

    EXPECT_EQ(run(u"vantrel-tool"_s), succeeded("found\n"));
}

TEST_F(ProcessRunnerTest, InheritsTheEnvironmentOfTheMoment)
{
    qputenv("VANTREL_TEST_VALUE", "a value\n");

    EXPECT_EQ(shell(u"printf %s \"$VANTREL_TEST_VALUE\""_s), succeeded("a value\n"));
}

TEST_F(ProcessRunnerTest, SetsVariablesBesideTheInheritedOnesAndInTheirPlace)
{
    qputenv("VANTREL_TEST_VALUE", "inherited");
    qputenv("VANTREL_TEST_VALUES", "kept");

    const Output output = m_runner.runWith(
        {{"VANTREL_TEST_VALUE", "set=\n"}, {"VANTREL_TEST_OTHER", "new"}}, u"sh"_s,
        {u"-c"_s, u"printf %s \"$VANTREL_TEST_VALUE $VANTREL_TEST_VALUES $VANTREL_TEST_OTHER\""_s},
        QUrl::fromLocalFile(m_folder.path()));

    EXPECT_EQ(output, succeeded("set=\n kept new"));
    EXPECT_EQ(qgetenv("VANTREL_TEST_VALUE"), "inherited");
}

TEST_F(ProcessRunnerTest, CapturesBytesThatAreNoText)
{
    const auto output = m_runner.capture(ChildCommand{
        {"sh", "-c", "printf '%s\\0' \"${PWD##*/}\" \"$1\"", "sh", "\xe9"}, "/usr/bin", {}});

    EXPECT_EQ(output, (Result<QByteArray, ProcessFailure>(QByteArray("bin\0\xe9\0", 6))));
}

TEST_F(ProcessRunnerTest, RunsInTheDirectory)
{
    const QString name = QStringLiteral("100%41 \u00e9#?\n");
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(name));

    const Output output = m_runner.run(u"sh"_s, {u"-c"_s, u"printf %s \"${PWD##*/}\""_s},
                                       QUrl::fromLocalFile(m_folder.filePath(name)));

    EXPECT_EQ(output, succeeded(name.toUtf8()));
}

TEST_F(ProcessRunnerTest, TheChildSharesTheStandardInput)
{
    QTemporaryFile input;
    ASSERT_TRUE(input.open());
    input.write("typed\n");
    input.seek(0);
    const int before = ::dup(STDIN_FILENO);
    ::dup2(input.handle(), STDIN_FILENO);

    const Output output = run(u"cat"_s);

    ::dup2(before, STDIN_FILENO);
    ::close(before);
    EXPECT_EQ(output, succeeded("typed\n"));
}

TEST_F(ProcessRunnerTest, LeavesNothingElseOpenToTheChild)
{
    const qsizetype before = inheritedPipes();

    const Output output = shell(u"for d in /proc/$$/fd/*; do readlink $d || true; done"_s);

    ASSERT_TRUE(output);
    EXPECT_EQ(linesThatBegin(u"pipe:"_s, output->toString()), before + 2);
}

TEST_F(ProcessRunnerTest, KeepsNoDescriptorItself)
{
    EXPECT_EQ(run(u"true"_s), succeeded({}));
    const qsizetype before = openDescriptors();

    EXPECT_EQ(run(u"true"_s), succeeded({}));
    EXPECT_EQ(run(u"false"_s), exited(1, {}));
    EXPECT_EQ(m_runner.run(u"true"_s, {}, QUrl::fromLocalFile(m_folder.filePath(u"none"_s))),
              refused(u"No such file or directory"_s));

    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(ProcessRunnerTest, ReadsSeveralMegabytesFromBothPipes)
{
    const Output output = shell(u"head -c 5000000 /dev/zero | tr '\\0' e >&2; "
                                "head -c 5000000 /dev/zero | tr '\\0' o"_s);

    EXPECT_EQ(output, succeeded(QByteArray(5'000'000, 'o')));
}

TEST_F(ProcessRunnerTest, KeepsSeveralMegabytesOfStandardError)
{
    const Output output = shell(u"head -c 5000000 /dev/zero | tr '\\0' o; "
                                "head -c 5000000 /dev/zero | tr '\\0' e >&2; exit 3"_s);

    EXPECT_EQ(output, exited(3, QString(5'000'000, u'e')));
}

TEST_F(ProcessRunnerTest, DiscardsTheStandardErrorOfAChildThatSucceeds)
{
    EXPECT_EQ(shell(u"echo warning >&2; echo out"_s), succeeded("out\n"));
}

TEST_F(ProcessRunnerTest, AFailedChildGivesItsStatusAndItsUntrimmedStandardError)
{
    EXPECT_EQ(shell(u"echo out; printf ' wrong\\n' >&2; exit 42"_s), exited(42, u" wrong\n"_s));
}

TEST_F(ProcessRunnerTest, AFailedChildThatSaysNothingGivesAnEmptyMessage)
{
    const Output output = run(u"false"_s);

    EXPECT_EQ(output, exited(1, {}));
    EXPECT_EQ(output.error().description(), u"Command exited with status 1: "_s);
}

TEST_F(ProcessRunnerTest, TheHighestStatusStaysPositive)
{
    EXPECT_EQ(shell(u"exit 255"_s), exited(255, {}));
}

TEST_F(ProcessRunnerTest, AStandardErrorThatIsNotUtf8IsAnUnknownError)
{
    EXPECT_EQ(shell(u"printf 'caf\\351' >&2; exit 1"_s), exited(1, u"Unknown error"_s));
}

TEST_F(ProcessRunnerTest, AStandardErrorThatEndsInTheMiddleOfALetterIsAnUnknownError)
{
    EXPECT_EQ(shell(u"printf 'caf\\303' >&2; exit 1"_s), exited(1, u"Unknown error"_s));
}

TEST_F(ProcessRunnerTest, AStandardErrorKeepsItsByteOrderMark)
{
    EXPECT_EQ(shell(u"printf '\\357\\273\\277e' >&2; exit 1"_s),
              exited(1, QStringLiteral("\uFEFFe")));
}

TEST_F(ProcessRunnerTest, AnOutputThatIsNotUtf8IsEmpty)
{
    EXPECT_EQ(shell(u"printf 'caf\\351'"_s), succeeded({}));
}

TEST_F(ProcessRunnerTest, AnOutputThatEndsInTheMiddleOfALetterIsEmpty)
{
    EXPECT_EQ(shell(u"printf 'caf\\303'"_s), succeeded({}));
}

TEST_F(ProcessRunnerTest, AnOutputKeepsNulCharactersAndItsByteOrderMark)
{
    EXPECT_EQ(shell(u"printf '\\357\\273\\277a\\0b'"_s), succeeded(QByteArray("\xef\xbb\xbf"
                                                                              "a\0b",
                                                                              6)));
}

TEST_F(ProcessRunnerTest, AnUnknownToolFailsWithTheWordsOfEnv)
{
    qputenv("LC_ALL", "C");

    EXPECT_EQ(run(u"vantrel-none"_s),
              exited(127, u"/usr/bin/env: 'vantrel-none': No such file or directory\n"_s));
}

TEST_F(ProcessRunnerTest, AMissingDirectoryIsALaunchThatFails)
{
    EXPECT_EQ(m_runner.run(u"true"_s, {}, QUrl::fromLocalFile(m_folder.filePath(u"none"_s))),
              refused(u"No such file or directory"_s));
}

TEST_F(ProcessRunnerTest, ADirectoryThatIsAFileIsALaunchThatFails)
{
    EXPECT_EQ(m_runner.run(u"true"_s, {}, QUrl::fromLocalFile(u"/dev/null"_s)),
              refused(u"Not a directory"_s));
}

TEST_F(ProcessRunnerTest, DeathByASignalGivesItsNumber)
{
    EXPECT_EQ(shell(u"echo dying >&2; kill -KILL $$"_s), exited(SIGKILL, u"dying\n"_s));
}

TEST_F(ProcessRunnerTest, TheChildDiesOfASignalThatThisProcessIgnores)
{
    const auto before = std::signal(SIGPIPE, SIG_IGN);

    const Output output = shell(u"kill -PIPE $$; echo survived"_s);

    std::signal(SIGPIPE, before);
    EXPECT_EQ(output, exited(SIGPIPE, {}));
}

TEST_F(ProcessRunnerTest, TheChildDiesOfASignalThatThisThreadBlocks)
{
    sigset_t blocked;
    sigset_t before;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &before);

    const Output output = shell(u"kill -TERM $$; echo survived"_s);

    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(output, exited(SIGTERM, {}));
}

TEST_F(ProcessRunnerTest, WhereTheSystemKeepsNoStatusNothingPassesForASuccess)
{
    const auto before = std::signal(SIGCHLD, SIG_IGN);

    const Output output = run(u"false"_s);

    std::signal(SIGCHLD, before);
    EXPECT_EQ(output, refused(u"No child processes"_s));
}

// The gate opens when the child, which holds its other end, has exited.
TEST_F(ProcessRunnerTest, WaitsForAGrandchildThatHoldsThePipes)
{
    const Output output = shell(u"mkfifo gate; { cat gate; echo late; echo late >&2; } & "
                                "exec 3>gate; echo early"_s);

    EXPECT_EQ(output, succeeded("early\nlate\n"));
}

TEST_F(ProcessRunnerTest, RunsOnSeveralThreadsAtOnce)
{
    constexpr std::size_t threadCount = 4;
    std::vector<Output> outputs(threadCount, succeeded({}));
    std::vector<std::thread> threads;
    threads.reserve(threadCount);

    for (std::size_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([this, i, &outputs] {
            outputs[i] =
                shell(u"head -c 300000 /dev/zero | tr '\\0' \"$1\""_s, {QString::number(i)});
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }

    EXPECT_EQ(outputs, (std::vector<Output>{succeeded(QByteArray(300'000, '0')),
                                            succeeded(QByteArray(300'000, '1')),
                                            succeeded(QByteArray(300'000, '2')),
                                            succeeded(QByteArray(300'000, '3'))}));
}

} // namespace
} // namespace vantrel
