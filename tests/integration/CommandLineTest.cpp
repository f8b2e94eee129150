// The program's command line, on the built program.

#include <gtest/gtest.h>

#include <QProcess>
#include <QString>
#include <QStringList>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

struct Ended
{
    int exitCode = -1;
    QString output{};
    QString errors{};
};

Ended run(const QStringList &arguments)
{
    QProcess program;
    program.start(QString::fromUtf8(VANTREL), arguments);
    EXPECT_TRUE(program.waitForFinished());
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

TEST(CommandLine, HelpNamesTheFolderAndEndsWell)
{
    const Ended ended = run({u"--help"_s});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_TRUE(ended.output.contains(u"[FOLDER]"_s));
    EXPECT_EQ(ended.errors, QString());
}

TEST(CommandLine, VersionIsOneLine)
{
    const Ended ended = run({u"--version"_s});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.output, u"vantrel 0.1.0\n"_s);
}

TEST(CommandLine, AnUnknownOptionIsRefusedInOneLine)
{
    const Ended ended = run({u"--frobnicate"_s});

    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_EQ(ended.errors, u"vantrel: Unknown option 'frobnicate'.\n"_s);
}

TEST(CommandLine, TwoFoldersAreRefusedInOneLine)
{
    const Ended ended = run({u"/one"_s, u"/two"_s});

    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_EQ(ended.errors, u"vantrel: only one folder can be opened\n"_s);
}

} // namespace
} // namespace vantrel
