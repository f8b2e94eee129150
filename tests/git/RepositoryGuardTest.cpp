#include "git/RepositoryGuard.h"

#include "ListingSamples.h"
#include "TrapTest.h"

#include <QFile>

#include <thread>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::rawHunk;
using test::trackedFile;

using Programs = Result<QList<RepositoryProgram>, ProcessFailure>;

Programs programs(const QList<RepositoryProgram> &programs)
{
    return programs;
}

/// A repository whose own configuration names a filter for all of its files.
class RepositoryGuardTest : public test::TrapTest
{
protected:
    RepositoryGuardTest()
    {
        changeFile();
        setAttributes("filter=case");
    }

    void nameFilter()
    {
        m_filter = filterTrap(u"filter"_s);
        configure(u"filter.case.clean"_s, m_filter);
    }

    [[nodiscard]] Programs inspect() { return m_guard.inspect(m_repository.root()); }

    void allowAll() { m_guard.allow(m_repository.root(), inspect().value()); }

    [[nodiscard]] QList<RepositoryProgram> filter() const
    {
        return {{{}, u"filter.case.clean"_s, m_filter}};
    }

    static Listing oneLineChanged()
    {
        return QList<FileChange>{trackedFile(
            u"f"_s, ChangeStatus::modified, 1, 1,
            {rawHunk("@@ -2,7 +2,7 @@", 2, 2, {" 2", " 3", " 4", "-5", "+5!", " 6", " 7", " 8"})})};
    }

    static Listing notAllowed()
    {
        return failure(ProcessFailure(PlatformError{
            u"The repository's configuration names programs that were not allowed to run."_s}));
    }

    QString m_filter{};
};

TEST_F(RepositoryGuardTest, FindsNothingInAnOrdinaryRepository)
{
    EXPECT_EQ(inspect(), programs({}));
}

TEST_F(RepositoryGuardTest, NamesAFilterOfTheRepository)
{
    nameFilter();

    EXPECT_EQ(inspect(), programs(filter()));
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(RepositoryGuardTest, NamesAFilterProcessOfTheRepository)
{
    configure(u"filter.case.process"_s, trap(u"process"_s));

    EXPECT_EQ(inspect(), programs({{{}, u"filter.case.process"_s, trap(u"process"_s)}}));
}

TEST_F(RepositoryGuardTest, AFilterThatWasNotAllowedKeepsTheRepositoryFromBeingRead)
{
    nameFilter();
    ASSERT_TRUE(inspect());

    EXPECT_EQ(changedFiles(), notAllowed());
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(RepositoryGuardTest, SoItIsInARepositoryThatWasNotInspected)
{
    nameFilter();

    EXPECT_EQ(changedFiles(), notAllowed());
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(RepositoryGuardTest, AnAllowedFilterRuns)
{
    nameFilter();
    allowAll();

    EXPECT_EQ(changedFiles(), oneLineChanged());
    EXPECT_EQ(marks(), QStringList{u"filter"_s});
}

TEST_F(RepositoryGuardTest, AnAllowedFilterIsNotAskedForAgain)
{
    nameFilter();
    allowAll();

    EXPECT_EQ(inspect(), programs({}));
}

TEST_F(RepositoryGuardTest, AFilterThatHasBecomeAnotherIsAskedForAgain)
{
    nameFilter();
    allowAll();
    m_filter = filterTrap(u"other"_s);
    configure(u"filter.case.clean"_s, m_filter);

    EXPECT_EQ(inspect(), programs(filter()));
    EXPECT_EQ(changedFiles(), notAllowed());
}

TEST_F(RepositoryGuardTest, WhatIsAllowedInOneRepositoryIsNotInAnother)
{
    nameFilter();
    allowAll();
    const QString copy = m_repository.pathOutside(u"copy"_s);
    m_repository.git({u"worktree"_s, u"add"_s, u"--quiet"_s, copy});

    EXPECT_EQ(m_guard.inspect(QUrl::fromLocalFile(copy)), programs(filter()));
}

TEST_F(RepositoryGuardTest, AFilterOfThePersonRunsWithoutAQuestion)
{
    configurePerson("[filter \"case\"]\n\tclean = " + filterTrap(u"filter"_s).toUtf8() + '\n');

    EXPECT_EQ(inspect(), programs({}));
    EXPECT_EQ(changedFiles(), oneLineChanged());
    EXPECT_EQ(marks(), QStringList{u"filter"_s});
}

TEST_F(RepositoryGuardTest, AFilterOfTheRepositoryOverThePersonsIsNamed)
{
    configurePerson("[filter \"case\"]\n\tclean = cat\n");
    nameFilter();

    EXPECT_EQ(inspect(), programs(filter()));
}

TEST_F(RepositoryGuardTest, ThePersonsDiffProgramLeavesTheReviewWhole)
{
    configurePerson("[diff]\n\texternal = true\n");

    EXPECT_EQ(inspect(), programs({}));
    EXPECT_EQ(changedFiles(), oneLineChanged());
}

TEST_F(RepositoryGuardTest, ThePersonsConversionsAreShown)
{
    const QString upperCase = trap(u"upper"_s, "exec tr '!' '?' <\"$1\"\n");
    configurePerson("[diff \"odd\"]\n\ttextconv = " + upperCase.toUtf8() + "\n\tcommand = true\n");
    setAttributes("diff=odd");

    EXPECT_EQ(changedFiles(),
              Listing({trackedFile(u"f"_s, ChangeStatus::modified, 1, 1,
                                   {rawHunk("@@ -2,7 +2,7 @@", 2, 2,
                                            {" 2", " 3", " 4", "-5", "+5?", " 6", " 7", " 8"})})}));
}

TEST_F(RepositoryGuardTest, AConfigurationInAnotherEncodingIsRead)
{
    nameFilter();
    m_repository.write(u".git/more"_s, "[user]\n\tname = caf\xe9\n");
    configure(u"include.path"_s, u"more"_s);

    EXPECT_EQ(inspect(), programs(filter()));
}

TEST_F(RepositoryGuardTest, AConfigurationThatCannotBeReadFailsWithGitsWords)
{
    m_repository.write(u".git/config"_s, "[core\n");

    const Programs found = inspect();

    ASSERT_FALSE(found);
    ASSERT_NE(found.error().serviceError(), nullptr);
    EXPECT_EQ(found.error().serviceError()->message.section(u'\n', 0, 0),
              u"fatal: bad config line 1 in file .git/config"_s);
}

TEST_F(RepositoryGuardTest, InspectsWhileAnotherThreadLists)
{
    configure(u"diff.external"_s, trap(u"external"_s));
    Listing listing;

    std::thread lister([&] { listing = changedFiles(); });
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(inspect(), programs({}));
    }
    lister.join();

    EXPECT_EQ(listing, oneLineChanged());
    EXPECT_EQ(marks(), QStringList());
}

/// Counts what is run as "git".
class InspectionCost : public test::TrapTest
{
protected:
    InspectionCost()
    {
        changeFile();
        m_repository.write(u"../bin/git"_s, "#!/bin/sh\necho \"$6\" >>'" +
                                                QFile::encodeName(m_log) + "'\nexec " + realGit() +
                                                " \"$@\"\n");
        QFile::setPermissions(m_repository.pathOutside(u"bin/git"_s),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH",
                QFile::encodeName(m_repository.pathOutside(u"bin"_s)) + ':' + qgetenv("PATH"));
    }

    /// The subcommands that were run.
    [[nodiscard]] QByteArrayList runs() const
    {
        QFile log(m_log);
        return log.open(QFile::ReadOnly) ? log.readAll().trimmed().split('\n') : QByteArrayList();
    }

private:
    static QByteArray realGit()
    {
        return ProcessRunner()
            .run(u"which"_s, {u"git"_s}, QUrl::fromLocalFile(u"/"_s))
            .value()
            .toString()
            .trimmed()
            .toUtf8();
    }

    const QString m_log = m_repository.pathOutside(u"runs"_s);
};

TEST_F(InspectionCost, IsOneProcessForAnOpening)
{
    ASSERT_TRUE(m_guard.inspect(m_repository.root()));

    EXPECT_TRUE(changedFiles());
    EXPECT_TRUE(m_service.currentBranch(m_repository.root()));
    EXPECT_EQ(runs(), QByteArrayList({"config", "status", "diff", "rev-parse"}));
}

TEST_F(InspectionCost, IsTwoMoreAndOneInEachWithSubmodules)
{
    for (const QString &name : {u"one"_s, u"two"_s}) {
        m_repository.git({u"init"_s, u"--quiet"_s, name});
        m_repository.git(
            {u"-C"_s, name, u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"--message=One"_s});
    }
    m_repository.commitAll();
    QFile::remove(m_repository.pathOutside(u"runs"_s));

    ASSERT_TRUE(m_guard.inspect(m_repository.root()));

    EXPECT_EQ(runs(), QByteArrayList({"config", "rev-parse", "ls-files", "config", "config"}));
}

} // namespace
} // namespace vantrel
