// Programs that a submodule's own configuration names: git goes into each submodule to see whether
// it was altered.

#include "TrapTest.h"

#include <QDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A submodule whose own configuration names a filter, and whose file has a new time.
class SubmodulePrograms : public test::TrapTest
{
protected:
    void addSubmodule(const QString &outer, const QString &name)
    {
        const QString place = outer.isEmpty() ? name : outer + u'/' + name;
        m_repository.git({u"init"_s, u"--quiet"_s, place});
        m_repository.write(place + u"/f"_s, "one\n");
        m_repository.git({u"-C"_s, place, u"add"_s, u"f"_s});
        m_repository.git({u"-C"_s, place, u"commit"_s, u"--quiet"_s, u"--message=One"_s});
    }

    void nameFilter(const QString &place) const
    {
        m_repository.git(
            {u"-C"_s, place, u"config"_s, u"filter.case.clean"_s, filterTrap(u"filter"_s)});
        m_repository.write(place + u"/.git/info/attributes"_s, "* filter=case\n");
        m_repository.write(place + u"/f"_s, "two\n"); // Of the same size.
    }

    [[nodiscard]] QList<RepositoryProgram> found()
    {
        return m_guard.inspect(m_repository.root()).value();
    }

    [[nodiscard]] QList<RepositoryProgram> filterOf(const QString &submodule) const
    {
        return {{submodule, u"filter.case.clean"_s, filterTrap(u"filter"_s)}};
    }
};

TEST_F(SubmodulePrograms, AreNamedWithTheirSubmodule)
{
    addSubmodule({}, u"sub"_s);
    m_repository.commitAll();
    nameFilter(u"sub"_s);

    EXPECT_EQ(found(), filterOf(u"sub"_s));
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(SubmodulePrograms, AreRunByGitAlone)
{
    addSubmodule({}, u"sub"_s);
    m_repository.commitAll();
    nameFilter(u"sub"_s);

    EXPECT_TRUE(changedFilesUnguarded());
    EXPECT_EQ(marks(), QStringList{u"filter"_s});
}

TEST_F(SubmodulePrograms, AMonitorOfASubmoduleIsNotRun)
{
    addSubmodule({}, u"sub"_s);
    m_repository.commitAll();
    m_repository.git({u"-C"_s, u"sub"_s, u"config"_s, u"core.fsmonitor"_s, trap(u"monitor"_s)});
    m_repository.write(u"sub/f"_s, "two\n");

    EXPECT_TRUE(changedFiles());
    EXPECT_EQ(found(), QList<RepositoryProgram>());
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(SubmodulePrograms, AreNamedInASubmoduleOfASubmodule)
{
    addSubmodule({}, u"sub"_s);
    addSubmodule(u"sub"_s, u"inner"_s);
    m_repository.git(
        {u"-C"_s, u"sub"_s, u"-c"_s, u"advice.addEmbeddedRepo=false"_s, u"add"_s, u"inner"_s});
    m_repository.git({u"-C"_s, u"sub"_s, u"commit"_s, u"--quiet"_s, u"--message=Two"_s});
    m_repository.commitAll();
    nameFilter(u"sub/inner"_s);

    EXPECT_EQ(found(), filterOf(u"sub/inner"_s));
}

TEST_F(SubmodulePrograms, AreNamedWhereGitGoesOnToTheRepositoryAround)
{
    addSubmodule({}, u"sub"_s);
    m_repository.commitAll();
    nameFilter(u"sub"_s);
    m_repository.write(u"decoy/.git/index"_s, {});

    EXPECT_EQ(m_guard.inspect(QUrl::fromLocalFile(m_repository.path(u"decoy"_s))).value(),
              filterOf(u"sub"_s));
}

TEST_F(SubmodulePrograms, AreNoneWhereTheSubmoduleIsNotThere)
{
    addSubmodule({}, u"sub"_s);
    m_repository.commitAll();
    ASSERT_TRUE(QDir(m_repository.path(u"sub"_s)).removeRecursively());
    QDir().mkpath(m_repository.path(u"sub"_s));

    EXPECT_EQ(found(), QList<RepositoryProgram>());
}

TEST_F(SubmodulePrograms, ASubmoduleThatIsAlteredIsListedAsSuch)
{
    addSubmodule({}, u"sub"_s);
    m_repository.commitAll();
    m_repository.write(u"sub/f"_s, "changed\n");

    const auto listing = changedFiles();

    ASSERT_TRUE(listing);
    EXPECT_EQ(listing, changedFilesUnguarded());
    EXPECT_EQ(listing->size(), 1);
}

TEST_F(SubmodulePrograms, ARepositoryThatIsItsOwnSubmoduleIsInspectedOnce)
{
    addSubmodule({}, u"a/sub"_s);
    m_repository.commitAll();
    ASSERT_TRUE(QDir(m_repository.path(u"a/sub"_s)).removeRecursively());
    m_repository.write(u"a/sub/.git"_s, "gitdir: ../../.git\n");
    m_repository.link(u"a/sub/a"_s, "../../a");

    EXPECT_EQ(found(), QList<RepositoryProgram>());
}

} // namespace
} // namespace vantrel
