#include "git/GitEnvironment.h"

#include <gtest/gtest.h>

#include <QByteArrayList>
#include <QProcess>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

QByteArray gitConfig(const QString &key)
{
    QProcess git;
    git.start(u"git"_s, {u"config"_s, u"--get"_s, key});
    git.waitForFinished();
    return git.readAllStandardOutput().trimmed();
}

TEST(GitEnvironment, PinsWhatWouldChangeGitsAnswersAndKeepsInheritedSettings)
{
    qputenv("GIT_CONFIG_COUNT", "2");
    qputenv("GIT_CONFIG_KEY_0", "color.ui");
    qputenv("GIT_CONFIG_VALUE_0", "always");
    qputenv("GIT_CONFIG_KEY_1", "user.name");
    qputenv("GIT_CONFIG_VALUE_1", "Somebody");
    qputenv("GIT_DIR", "/elsewhere");
    qputenv("GIT_EXTERNAL_DIFF", "false");

    pinGitEnvironment();

    EXPECT_EQ(gitConfig(u"color.ui"_s), "never");
    EXPECT_EQ(gitConfig(u"color.diff"_s), "never");
    EXPECT_EQ(gitConfig(u"diff.context"_s), "3");
    EXPECT_EQ(gitConfig(u"diff.interHunkContext"_s), "0");
    EXPECT_EQ(gitConfig(u"diff.suppressBlankEmpty"_s), "false");
    EXPECT_EQ(gitConfig(u"core.preloadIndex"_s), "false");
    EXPECT_EQ(gitConfig(u"user.name"_s), "Somebody");
    EXPECT_EQ(qgetenv("GIT_LITERAL_PATHSPECS"), "1");
    for (const char *const name :
         {"GIT_DIR", "GIT_WORK_TREE", "GIT_INDEX_FILE", "GIT_EXTERNAL_DIFF", "GIT_DIFF_OPTS"}) {
        EXPECT_FALSE(qEnvironmentVariableIsSet(name)) << name;
    }
}

} // namespace
} // namespace vantrel
