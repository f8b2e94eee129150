#include "git/GitEnvironment.h"

#include "EnvironmentRestorer.h"

#include <gtest/gtest.h>

#include <QByteArrayList>

namespace vantrel {
namespace {

class GitEnvironmentTest : public testing::Test
{
protected:
    GitEnvironmentTest()
    {
        qunsetenv("GIT_LITERAL_PATHSPECS");
        qunsetenv("GIT_CONFIG_COUNT");
    }

    /// The configuration that git takes from the environment, as "key=value".
    static QByteArrayList configuration()
    {
        QByteArrayList entries;
        for (int i = 0; i < qEnvironmentVariableIntValue("GIT_CONFIG_COUNT"); ++i) {
            const QByteArray number = QByteArray::number(i);
            const QByteArray key = "GIT_CONFIG_KEY_" + number;
            const QByteArray value = "GIT_CONFIG_VALUE_" + number;
            entries.append(qgetenv(key.constData()) + '=' + qgetenv(value.constData()));
        }
        return entries;
    }

    const QByteArrayList m_pins{"color.ui=never",
                                "color.diff=never",
                                "diff.context=3",
                                "diff.interHunkContext=0",
                                "diff.suppressBlankEmpty=false",
                                "diff.submodule=short",
                                "core.preloadIndex=false"};
    test::EnvironmentRestorer m_environment;
};

TEST_F(GitEnvironmentTest, TakesPathsLiterally)
{
    pinGitEnvironment();

    EXPECT_EQ(qgetenv("GIT_LITERAL_PATHSPECS"), "1");
}

TEST_F(GitEnvironmentTest, KeepsGitAndLfsFromTheNetwork)
{
    pinGitEnvironment();

    EXPECT_EQ(qgetenv("GIT_NO_LAZY_FETCH"), "1");
    EXPECT_TRUE(qEnvironmentVariableIsSet("GIT_ALLOW_PROTOCOL"));
    EXPECT_EQ(qgetenv("GIT_ALLOW_PROTOCOL"), QByteArray());
    EXPECT_EQ(qgetenv("GIT_LFS_SKIP_SMUDGE"), "1");
    EXPECT_EQ(qgetenv("GIT_SSH_COMMAND"), "false");
}

TEST_F(GitEnvironmentTest, PinsTheConfigurationThatChangesDiffs)
{
    pinGitEnvironment();

    EXPECT_EQ(configuration(), m_pins);
}

TEST_F(GitEnvironmentTest, KeepsAnInheritedConfigurationBeforeThePins)
{
    qputenv("GIT_CONFIG_COUNT", "2");
    qputenv("GIT_CONFIG_KEY_0", "safe.directory");
    qputenv("GIT_CONFIG_VALUE_0", "*");
    qputenv("GIT_CONFIG_KEY_1", "color.ui");
    qputenv("GIT_CONFIG_VALUE_1", "always");

    pinGitEnvironment();

    EXPECT_EQ(configuration(), (QByteArrayList{"safe.directory=*", "color.ui=always"} + m_pins));
}

TEST_F(GitEnvironmentTest, ACountThatIsNoNumberCountsAsNone)
{
    qputenv("GIT_CONFIG_COUNT", "many");

    pinGitEnvironment();

    EXPECT_EQ(configuration(), m_pins);
}

TEST_F(GitEnvironmentTest, ANegativeCountCountsAsNone)
{
    qputenv("GIT_CONFIG_COUNT", "-1");

    pinGitEnvironment();

    EXPECT_EQ(configuration(), m_pins);
}

class InheritedVariable : public GitEnvironmentTest,
                          public testing::WithParamInterface<const char *>
{};

TEST_P(InheritedVariable, IsTakenAway)
{
    qputenv(GetParam(), "1");

    pinGitEnvironment();

    EXPECT_FALSE(qEnvironmentVariableIsSet(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(OfGit, InheritedVariable,
                         testing::Values("GIT_DIR", "GIT_WORK_TREE", "GIT_INDEX_FILE", "GIT_CONFIG",
                                         "GIT_CONFIG_PARAMETERS", "GIT_EXTERNAL_DIFF",
                                         "GIT_DIFF_OPTS", "GIT_GLOB_PATHSPECS",
                                         "GIT_NOGLOB_PATHSPECS", "GIT_ICASE_PATHSPECS"),
                         [](const auto &name) { return std::string(name.param); });

} // namespace
} // namespace vantrel
