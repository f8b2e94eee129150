// The program's command line, on the built program.

#include "support/ProcessRun.h"

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

test::ProcessRun run(const QStringList &arguments)
{
    return test::run(QString::fromUtf8(VANTREL), arguments);
}

TEST(CommandLine, HelpNamesTheFolderAndEndsWell)
{
    const test::ProcessRun ended = run({u"--help"_s});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_TRUE(ended.output.contains("[FOLDER]"));
    EXPECT_EQ(ended.errors, QByteArray());
}

TEST(CommandLine, VersionIsOneLine)
{
    const test::ProcessRun ended = run({u"--version"_s});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.output, "vantrel " VANTREL_VERSION "\n");
}

TEST(CommandLine, AnUnknownOptionIsRefusedInOneLine)
{
    const test::ProcessRun ended = run({u"--frobnicate"_s});

    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_EQ(ended.errors, "vantrel: Unknown option 'frobnicate'.\n");
}

TEST(CommandLine, TwoFoldersAreRefusedInOneLine)
{
    const test::ProcessRun ended = run({u"/one"_s, u"/two"_s});

    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_EQ(ended.errors, "vantrel: only one folder can be opened\n");
}

} // namespace
} // namespace vantrel
