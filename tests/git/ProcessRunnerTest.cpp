// Real child processes.

#include "git/ProcessRunner.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

const QUrl rootFolder = QUrl(QStringLiteral("file:///"));

Result<TextSlice, ProcessFailure> shell(const QString &script)
{
    return ProcessRunner().run(u"sh"_s, {u"-c"_s, script}, rootFolder);
}

ProcessFailure exitFailure(std::int32_t status, const QString &message)
{
    ProcessRunnerError error;
    error.status = status;
    error.message = message;
    return error;
}

/// Changes a variable of this process for the length of a test.
class EnvironmentChange
{
public:
    EnvironmentChange(const char *name, const QByteArray &value)
        : m_name(name)
        , m_former(qgetenv(name))
    {
        qputenv(name, value);
    }
    EnvironmentChange(const EnvironmentChange &) = delete;
    EnvironmentChange &operator=(const EnvironmentChange &) = delete;
    ~EnvironmentChange() { qputenv(m_name, m_former); }

private:
    const char *m_name;
    QByteArray m_former;
};

TEST(ProcessRunner, GivesTheOutputUntrimmed)
{
    EXPECT_EQ(shell(u"printf ' a\\n\\n'"_s).value(), TextSlice::fromUtf8(" a\n\n"));
}

TEST(ProcessRunner, PassesArgumentsAsSeparateWords)
{
    const auto output = ProcessRunner().run(
        u"printf"_s, {u"[%s]"_s, u"a b"_s, u"$HOME"_s, u"'q'\n"_s, u"é"_s, QString()}, rootFolder);

    EXPECT_EQ(output.value(), TextSlice::fromString(u"[a b][$HOME]['q'\n][é][]"));
}

TEST(ProcessRunner, RunsInTheGivenFolder)
{
    QTemporaryDir folder(QDir::tempPath() + u"/a b é-XXXXXX"_s);

    const auto output =
        ProcessRunner().run(u"pwd"_s, {u"-P"_s}, QUrl::fromLocalFile(folder.path()));

    EXPECT_EQ(output.value().toString().trimmed(), QDir(folder.path()).canonicalPath());
}

TEST(ProcessRunner, ReadsMegabytesOnBothPipesWithoutHanging)
{
    const auto output = shell(u"i=0; while [ $i -lt 60 ]; do head -c 65536 /dev/zero | tr '\\0' x; "
                              "head -c 65536 /dev/zero | tr '\\0' y >&2; i=$((i+1)); done"_s);

    EXPECT_EQ(output.value().size(), 60 * 65536);
}

TEST(ProcessRunner, DiscardsTheErrorsOfASuccess)
{
    EXPECT_EQ(shell(u"echo warning >&2; echo out"_s).value(), TextSlice::fromUtf8("out\n"));
}

TEST(ProcessRunner, FailsWithTheStatusAndTheErrorsUntrimmed)
{
    EXPECT_EQ(shell(u"echo out; echo ' bad ' >&2; exit 3"_s).error(), exitFailure(3, u" bad \n"_s));
}

TEST(ProcessRunner, FailsWithAnEmptyMessageWhenNothingWasSaid)
{
    const auto failed = shell(u"exit 1"_s);

    EXPECT_EQ(failed.error(), exitFailure(1, QString()));
    EXPECT_EQ(failed.error().description(), u"Command exited with status 1: "_s);
}

TEST(ProcessRunner, SaysUnknownErrorWhenTheErrorsAreNotUtf8)
{
    EXPECT_EQ(shell(u"printf 'a\\377' >&2; exit 2"_s).error(), exitFailure(2, u"Unknown error"_s));
}

TEST(ProcessRunner, GivesNoTextWhenTheOutputIsNotUtf8)
{
    EXPECT_EQ(shell(u"printf 'a\\303'"_s).value(), TextSlice());
}

TEST(ProcessRunner, GivesTheNumberOfTheSignalThatEndedTheChild)
{
    EXPECT_EQ(shell(u"kill -9 $$"_s).error(), exitFailure(9, QString()));
}

TEST(ProcessRunner, FailsWithTheMessageOfEnvWhenTheToolIsMissing)
{
    const auto failed = ProcessRunner().run(u"no-such-tool-anywhere"_s, {}, rootFolder);

    const ProcessRunnerError *const error = failed.error().serviceError();
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->status, 127);
    EXPECT_TRUE(error->message.contains(u"no-such-tool-anywhere"_s));
}

TEST(ProcessRunner, LooksTheToolUpOnTheSearchPathOfTheMoment)
{
    const EnvironmentChange change("PATH", "/nowhere");

    const auto failed = ProcessRunner().run(u"git"_s, {u"--version"_s}, rootFolder);

    ASSERT_FALSE(failed.has_value());
    EXPECT_EQ(failed.error().serviceError()->status, 127);
}

TEST(ProcessRunner, FailsWithThePlatformsSentenceWhenTheFolderIsMissing)
{
    const auto failed = ProcessRunner().run(u"true"_s, {}, QUrl(u"file:///no/such/folder"_s));

    EXPECT_EQ(failed.error(), ProcessFailure(PlatformError{u"No such file or directory"_s}));
}

TEST(ProcessRunner, WaitsForAGrandchildThatHoldsThePipe)
{
    // The child ends at once; its own child writes when the first one has become a zombie.
    const auto output =
        shell(u"(until grep -q '^State:.Z' /proc/$$/status; do :; done; echo late) & exit 0"_s);

    EXPECT_EQ(output.value(), TextSlice::fromUtf8("late\n"));
}

TEST(ProcessRunner, HandsTheChildNoOtherDescriptorsOfItsOwn)
{
    const auto output = shell(u"ls /proc/self/fd | wc -l"_s);
    const auto again = shell(u"ls /proc/self/fd | wc -l"_s);

    EXPECT_EQ(output.value(), again.value());
}

TEST(ProcessRunner, LeavesNoDescriptorOpen)
{
    const auto count = [] { return QDir(u"/proc/self/fd"_s).entryList().size(); };
    const auto before = count();

    for (int i = 0; i < 20; ++i) {
        (void)shell(u"echo x; exit $((RANDOM % 2))"_s);
        (void)ProcessRunner().run(u"true"_s, {}, QUrl(u"file:///no/such/folder"_s));
    }

    EXPECT_EQ(count(), before);
}

TEST(ProcessRunner, InheritsTheEnvironment)
{
    const EnvironmentChange change("VANTREL_TEST_VALUE", "seen");

    EXPECT_EQ(shell(u"printf %s \"$VANTREL_TEST_VALUE\""_s).value(), TextSlice::fromUtf8("seen"));
}

} // namespace
} // namespace vantrel
