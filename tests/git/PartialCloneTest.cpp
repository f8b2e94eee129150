// A clone without the contents of its files, which git would fetch when it compares them: from the
// network, with programs of the repository's configuration, and into the repository.

#include "TrapTest.h"

#include <QFile>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

class PartialClone : public test::TrapTest
{
protected:
    PartialClone()
    {
        m_repository.write(u"f"_s, "one\n");
        m_repository.commitAll();
        configure(u"uploadpack.allowFilter"_s, u"true"_s);
        configure(u"uploadpack.allowAnySHA1InWant"_s, u"true"_s);
        m_repository.git({u"clone"_s, u"--quiet"_s, u"--no-local"_s, u"--no-checkout"_s,
                          u"--filter=blob:none"_s, m_repository.path(), m_clone.toLocalFile()});
        inClone({u"read-tree"_s, u"HEAD"_s});
        m_repository.write(u"../clone/f"_s, "two\n");
        inClone({u"config"_s, u"remote.origin.uploadpack"_s,
                 trap(u"server"_s, "exec git-upload-pack \"$@\"\n")});
    }

    void inClone(const QStringList &arguments) const
    {
        m_repository.git(QStringList{u"-C"_s, m_clone.toLocalFile()} + arguments);
    }

    [[nodiscard]] Listing changedFilesOfClone()
    {
        return m_service.changedFiles(m_clone, ListingControl());
    }

    const QUrl m_clone = QUrl::fromLocalFile(m_repository.pathOutside(u"clone"_s));
};

TEST_F(PartialClone, IsNotCompleted)
{
    const Listing listing = changedFilesOfClone();

    EXPECT_TRUE(failureOf(listing).startsWith(u"128 "_s)) << qPrintable(failureOf(listing));
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(PartialClone, IsNotCompletedByAGitThatKnowsProtocolsAlone)
{
    qunsetenv("GIT_NO_LAZY_FETCH");

    const Listing listing = changedFilesOfClone();

    EXPECT_EQ(failureOf(listing), u"128 fatal: transport 'file' not allowed"_s);
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(PartialClone, WouldBeCompletedByGitAlone)
{
    qunsetenv("GIT_NO_LAZY_FETCH");
    qunsetenv("GIT_ALLOW_PROTOCOL");

    EXPECT_TRUE(changedFilesOfClone());
    EXPECT_EQ(marks(), QStringList{u"server"_s});
}

/// What the configuration of a remote makes git run when it fetches.
struct FetchProgram
{
    const char *name;
    const char *key;
    QString url{};
};

class FetchOfAPartialClone : public PartialClone, public testing::WithParamInterface<FetchProgram>
{
protected:
    FetchOfAPartialClone()
    {
        m_repository.link(u"../git-remote-trap"_s, QFile::encodeName(trap(u"program"_s)));
        qputenv("PATH", QFile::encodeName(m_repository.pathOutside({})) + ':' + qgetenv("PATH"));
        inClone({u"config"_s, QString::fromLatin1(GetParam().key), trap(u"program"_s)});
        inClone({u"config"_s, u"protocol.allow"_s, u"always"_s});
        inClone({u"config"_s, u"remote.origin.url"_s, GetParam().url});
    }
};

TEST_P(FetchOfAPartialClone, RunsNothing)
{
    EXPECT_FALSE(changedFilesOfClone());
    EXPECT_EQ(marks(), QStringList());
}

TEST_P(FetchOfAPartialClone, WouldRunTheProgramByGitAlone)
{
    qunsetenv("GIT_NO_LAZY_FETCH");
    qunsetenv("GIT_ALLOW_PROTOCOL");
    qunsetenv("GIT_SSH_COMMAND");

    EXPECT_FALSE(changedFilesOfClone());
    EXPECT_EQ(marks(), QStringList{u"program"_s});
}

INSTANTIATE_TEST_SUITE_P(
    All, FetchOfAPartialClone,
    testing::Values(FetchProgram{"Ssh", "core.sshCommand", u"ssh://example.invalid/r"_s},
                    FetchProgram{"Proxy", "core.gitProxy", u"git://example.invalid/r"_s},
                    FetchProgram{"Helper", "x.unused", u"trap::r"_s},
                    FetchProgram{"Command", "x.unused", u"ext::git-remote-trap"_s}),
    [](const auto &program) { return std::string(program.param.name); });

TEST_F(PartialClone, ThatHasTheContentsIsListed)
{
    inClone({u"checkout"_s, u"--quiet"_s, u"--force"_s, u"main"_s});
    m_repository.write(u"../clone/f"_s, "two\n");
    QFile::remove(m_repository.pathOutside(u"marks/server"_s));

    const Listing listing = changedFilesOfClone();

    ASSERT_TRUE(listing);
    EXPECT_EQ(listing->size(), 1);
    EXPECT_EQ(marks(), QStringList());
}

} // namespace
} // namespace vantrel
