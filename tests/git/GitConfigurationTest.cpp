// A person's or a repository's configuration that would change what git prints.

#include "ListingSamples.h"
#include "RepositoryTest.h"

#include "git/GitEnvironment.h"

#include <QFile>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::numberedLines;
using test::rawHunk;
using test::trackedFile;

class GitConfiguration : public test::RepositoryTest
{
protected:
    void configure(const QString &key, const QString &value) const
    {
        m_repository.git({u"config"_s, key, value});
    }

    /// Commits one version of "f" and leaves the other in the working tree.
    void change(const QByteArray &before, const QByteArray &after) const
    {
        m_repository.write(u"f"_s, before);
        m_repository.commitAll();
        m_repository.write(u"f"_s, after);
    }

    static Listing oneLineChanged()
    {
        return QList<FileChange>{trackedFile(
            u"f"_s, ChangeStatus::modified, 1, 1,
            {rawHunk("@@ -2,7 +2,7 @@", 2, 2, {" 2", " 3", " 4", "-5", "+5!", " 6", " 7", " 8"})})};
    }
};

TEST_F(GitConfiguration, ColoursForEverythingDoNotHideHunks)
{
    configure(u"color.ui"_s, u"always"_s);
    change(numberedLines(9), numberedLines(9, {5}));

    EXPECT_EQ(changedFiles(), oneLineChanged());
}

TEST_F(GitConfiguration, ColoursForDiffsDoNotHideHunks)
{
    configure(u"color.diff"_s, u"always"_s);
    change(numberedLines(9), numberedLines(9, {5}));

    EXPECT_EQ(changedFiles(), oneLineChanged());
}

TEST_F(GitConfiguration, AnotherContextDoesNotCount)
{
    configure(u"diff.context"_s, u"0"_s);
    change(numberedLines(9), numberedLines(9, {5}));

    EXPECT_EQ(changedFiles(), oneLineChanged());
}

TEST_F(GitConfiguration, ContextBetweenHunksDoesNotJoinThem)
{
    configure(u"diff.interHunkContext"_s, u"10"_s);
    change(numberedLines(20), numberedLines(20, {5, 15}));

    const QList<RawHunk> hunks{
        rawHunk("@@ -2,7 +2,7 @@", 2, 2, {" 2", " 3", " 4", "-5", "+5!", " 6", " 7", " 8"}),
        rawHunk("@@ -12,7 +12,7 @@", 12, 12,
                {" 12", " 13", " 14", "-15", "+15!", " 16", " 17", " 18"})};
    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::modified, 2, 2, hunks)}));
}

TEST_F(GitConfiguration, BlankLinesOfTheContextStay)
{
    configure(u"diff.suppressBlankEmpty"_s, u"true"_s);
    change("\na\n\n", "\nb\n\n");

    EXPECT_EQ(changedFiles(),
              Listing({trackedFile(u"f"_s, ChangeStatus::modified, 1, 1,
                                   {rawHunk("@@ -1,3 +1,3 @@", 1, 1, {" ", "-a", "+b", " "})})}));
}

TEST_F(GitConfiguration, APersonsConfigurationIsPinnedToo)
{
    m_repository.write(u"../home/.gitconfig"_s, "[color]\n\tui = always\n[diff]\n\tcontext = 1\n");
    change(numberedLines(9), numberedLines(9, {5}));

    EXPECT_EQ(changedFiles(), oneLineChanged());
}

TEST_F(GitConfiguration, OtherFormsOfPathsAndRenamesHaveNoEffect)
{
    configure(u"diff.noprefix"_s, u"true"_s);
    configure(u"diff.mnemonicPrefix"_s, u"true"_s);
    configure(u"diff.renames"_s, u"copies"_s);
    configure(u"diff.relative"_s, u"true"_s);
    configure(u"status.renames"_s, u"copies"_s);
    configure(u"status.relativePaths"_s, u"true"_s);
    configure(u"status.short"_s, u"true"_s);
    configure(u"status.branch"_s, u"true"_s);
    configure(u"status.showUntrackedFiles"_s, u"no"_s);
    configure(u"core.quotePath"_s, u"true"_s);
    m_repository.write(u"d/old"_s, numberedLines(2));
    m_repository.commitAll();
    m_repository.git({u"mv"_s, u"d/old"_s, QStringLiteral("d/n\u00e9w")});
    m_repository.write(u"free"_s, "x");

    const QList<FileChange> expected{
        trackedFile(QStringLiteral("d/n\u00e9w"), ChangeStatus::added, 2, 0,
                    {rawHunk("@@ -0,0 +1,2 @@", 0, 1, {"+1", "+2"})}),
        trackedFile(u"d/old"_s, ChangeStatus::deleted, 0, 2,
                    {rawHunk("@@ -1,2 +0,0 @@", 1, 0, {"-1", "-2"})}),
        test::untrackedFile(u"free"_s, 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+x"})})};
    EXPECT_EQ(changedFiles(), Listing(expected));
}

TEST_F(GitConfiguration, AMonitorOfTheRepositoryIsNotRun)
{
    const QString proof = m_repository.pathOutside(u"proof"_s);
    m_repository.write(u"../monitor"_s,
                       "#!/bin/sh\n: >'" + QFile::encodeName(proof) + "'\nexit 1\n");
    QFile::setPermissions(m_repository.pathOutside(u"monitor"_s),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    change(numberedLines(9), numberedLines(9, {5}));
    configure(u"core.fsmonitor"_s, m_repository.pathOutside(u"monitor"_s));

    EXPECT_EQ(changedFiles(), oneLineChanged());
    EXPECT_FALSE(QFile::exists(proof));
}

TEST_F(GitConfiguration, AConfigurationThatCannotBeReadFailsWithGitsWords)
{
    m_repository.write(u".git/config"_s, "[core\n");

    EXPECT_EQ(failureOf(changedFiles()), u"128 fatal: bad config line 1 in file .git/config"_s);
}

/// Variables that a shell or a hook left behind.
class InheritedGitVariables : public GitConfiguration
{
protected:
    InheritedGitVariables() { change(numberedLines(9), numberedLines(9, {5})); }

    [[nodiscard]] Listing changedFilesWith(const char *name, const QByteArray &value)
    {
        qputenv(name, value);
        pinGitEnvironment();
        return changedFiles();
    }
};

TEST_F(InheritedGitVariables, AnotherRepositoryIsNotAsked)
{
    EXPECT_EQ(changedFilesWith("GIT_DIR", "/nonexistent"), oneLineChanged());
}

TEST_F(InheritedGitVariables, AnotherWorkingTreeIsNotAsked)
{
    EXPECT_EQ(changedFilesWith("GIT_WORK_TREE", "/usr/share/git-core"), oneLineChanged());
}

TEST_F(InheritedGitVariables, AnotherIndexIsNotAsked)
{
    EXPECT_EQ(changedFilesWith("GIT_INDEX_FILE", "/nonexistent"), oneLineChanged());
}

TEST_F(InheritedGitVariables, AnotherDiffToolIsNotRun)
{
    EXPECT_EQ(changedFilesWith("GIT_EXTERNAL_DIFF", "true"), oneLineChanged());
}

TEST_F(InheritedGitVariables, OptionsForDiffsDoNotCount)
{
    EXPECT_EQ(changedFilesWith("GIT_DIFF_OPTS", "--unified=0"), oneLineChanged());
}

TEST_F(InheritedGitVariables, AnotherReadingOfPathsDoesNotMakeGitFail)
{
    EXPECT_EQ(changedFilesWith("GIT_ICASE_PATHSPECS", "1"), oneLineChanged());
}

} // namespace
} // namespace vantrel
