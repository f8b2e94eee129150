// Programs of a repository's configuration that git never runs: each would leave a mark.

#include "TrapTest.h"

#include "ListingSamples.h"

#include <QDir>
#include <QFile>

#include <cctype>
#include <functional>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::rawHunk;
using test::trackedFile;

/// A configuration that makes git run a program, in a repository with a changed file "f".
struct TrappedConfiguration
{
    const char *name;
    std::function<void(class ReplacedPrograms &)> make{};
};

class ReplacedPrograms : public test::TrapTest,
                         public testing::WithParamInterface<TrappedConfiguration>
{
public:
    using TrapTest::configure;
    using TrapTest::configurePerson;
    using TrapTest::filterTrap;
    using TrapTest::readerTrap;
    using TrapTest::setAttributes;
    using TrapTest::trap;

    [[nodiscard]] const test::TemporaryRepository &repository() const { return m_repository; }

protected:
    ReplacedPrograms() { changeFile(); }

    static Listing oneLineChanged()
    {
        return QList<FileChange>{trackedFile(
            u"f"_s, ChangeStatus::modified, 1, 1,
            {rawHunk("@@ -2,7 +2,7 @@", 2, 2, {" 2", " 3", " 4", "-5", "+5!", " 6", " 7", " 8"})})};
    }
};

TEST_P(ReplacedPrograms, AreNotRunAndTheChangesAreTheSame)
{
    GetParam().make(*this);

    EXPECT_EQ(changedFiles(), oneLineChanged());
    EXPECT_EQ(marks(), QStringList());
}

TEST_P(ReplacedPrograms, AreNothingToAskFor)
{
    GetParam().make(*this);

    EXPECT_EQ(m_guard.inspect(m_repository.root()),
              (Result<QList<RepositoryProgram>, ProcessFailure>(QList<RepositoryProgram>())));
}

TEST_P(ReplacedPrograms, WouldBeRunByGitAlone)
{
    GetParam().make(*this);

    EXPECT_TRUE(changedFilesUnguarded());
    EXPECT_NE(marks(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    All, ReplacedPrograms,
    testing::Values(
        TrappedConfiguration{"DiffExternal",
                             [](ReplacedPrograms &test) {
                                 test.configure(u"diff.external"_s, test.trap(u"external"_s));
                             }},
        TrappedConfiguration{"IncludedFile",
                             [](ReplacedPrograms &test) {
                                 test.repository().write(u".git/more"_s,
                                                         "[diff]\n\texternal = " +
                                                             test.trap(u"external"_s).toUtf8());
                                 test.configure(u"include.path"_s, u"more"_s);
                             }},
        TrappedConfiguration{"ConfigurationOfTheWorkingTree",
                             [](ReplacedPrograms &test) {
                                 test.configure(u"extensions.worktreeConfig"_s, u"true"_s);
                                 test.repository().git({u"config"_s, u"--worktree"_s,
                                                        u"diff.external"_s,
                                                        test.trap(u"external"_s)});
                             }},
        TrappedConfiguration{"OverThePersonsOwn",
                             [](ReplacedPrograms &test) {
                                 test.configurePerson("[diff]\n\texternal = true\n");
                                 test.configure(u"diff.external"_s, test.trap(u"external"_s));
                             }},
        TrappedConfiguration{"CommandOfADriver",
                             [](ReplacedPrograms &test) {
                                 test.setAttributes("diff=images");
                                 test.configure(u"diff.images.command"_s, test.trap(u"command"_s));
                             }},
        TrappedConfiguration{"CommandOfADriverWithAnOddName",
                             [](ReplacedPrograms &test) {
                                 test.setAttributes("diff=a.b=\"$(x)'\xff");
                                 test.repository().write(
                                     u".git/more"_s, "[diff \"a.b=\\\"$(x)'\xff\"]\n\tCommand = " +
                                                         test.trap(u"command"_s).toUtf8());
                                 test.configure(u"include.path"_s, u"more"_s);
                             }},
        TrappedConfiguration{"ConversionOfADriver",
                             [](ReplacedPrograms &test) {
                                 test.setAttributes("diff=images");
                                 test.configure(u"diff.images.textconv"_s,
                                                test.readerTrap(u"conversion"_s));
                             }},
        TrappedConfiguration{"ConversionOverThePersonsOwn",
                             [](ReplacedPrograms &test) {
                                 test.setAttributes("diff=images");
                                 test.configurePerson("[diff \"images\"]\n\ttextconv = cat\n");
                                 test.configure(u"diff.images.textconv"_s,
                                                test.readerTrap(u"conversion"_s));
                             }},
        TrappedConfiguration{"SmudgeFilterBeforeADiffProgram",
                             [](ReplacedPrograms &test) {
                                 test.setAttributes("filter=case");
                                 test.configure(u"filter.case.smudge"_s,
                                                test.filterTrap(u"smudge"_s));
                                 test.configure(u"filter.case.required"_s, u"false"_s);
                                 test.configurePerson("[diff]\n\texternal = true\n");
                             }}),
    [](const auto &configuration) { return std::string(configuration.param.name); });

using RepositoryTraps = test::TrapTest;

TEST_F(RepositoryTraps, AConversionOfAFileInConflictWithoutACommitIsNotRun)
{
    QByteArrayList entries;
    for (const int stage : {1, 2, 3}) {
        m_repository.write(u"f"_s, QByteArray::number(stage) + '\n');
        const QByteArray hash = m_repository.git({u"hash-object"_s, u"-w"_s, u"f"_s}).trimmed();
        entries.append("100644 " + hash + ' ' + QByteArray::number(stage) + "\tf\n");
    }
    m_repository.write(u"../entries"_s, entries.join());
    m_repository.git(
        {u"-c"_s, u"alias.fill=!git update-index --index-info <../entries"_s, u"fill"_s});
    m_repository.write(u"f"_s, "4\n");
    const Listing before = changedFiles();
    setAttributes("diff=images");
    configure(u"diff.images.textconv"_s, readerTrap(u"conversion"_s));

    EXPECT_EQ(changedFiles(), before);
    EXPECT_EQ(marks(), QStringList());
    EXPECT_EQ(changedFilesUnguarded(), before);
    EXPECT_EQ(marks(), QStringList{u"conversion"_s});
}

TEST_F(RepositoryTraps, TheConversionsOfThePersonAreNotKeptInTheRepository)
{
    changeFile();
    setAttributes("diff=images");
    configurePerson("[user]\n\tname = Somebody\n\temail = somebody@example.com\n"
                    "[diff \"images\"]\n\ttextconv = cat\n\tcachetextconv = true\n");

    EXPECT_TRUE(changedFiles());

    EXPECT_EQ(m_repository.git({u"for-each-ref"_s, u"refs/notes"_s}), QByteArray());
    EXPECT_TRUE(changedFilesUnguarded());
    EXPECT_NE(m_repository.git({u"for-each-ref"_s, u"refs/notes"_s}), QByteArray());
}

TEST_F(RepositoryTraps, AWorkingTreeElsewhereIsNotRead)
{
    changeFile();
    const Listing before = changedFiles();
    m_repository.write(u"../elsewhere/f"_s, "secret\n");
    configure(u"core.worktree"_s, m_repository.pathOutside(u"elsewhere"_s));

    EXPECT_EQ(changedFiles(), before);
    EXPECT_NE(changedFilesUnguarded(), before);
}

/// Commands that have nothing to do with reading changes.
class IdleProgram : public test::TrapTest, public testing::WithParamInterface<const char *>
{};

TEST_P(IdleProgram, IsNotRun)
{
    changeFile();
    const QString key = QString::fromLatin1(GetParam());
    configure(key, trap(u"direct"_s));
    m_repository.git({u"config"_s, u"--add"_s, key, u'!' + trap(u"shell"_s)});

    EXPECT_TRUE(changedFiles());
    EXPECT_TRUE(m_service.currentBranch(m_repository.root()));
    EXPECT_EQ(marks(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    All, IdleProgram,
    testing::Values("alias.config", "alias.diff", "alias.rev-parse", "alias.status",
                    "core.alternateRefsCommand", "core.askPass", "core.editor", "core.fsmonitor",
                    "core.gitProxy", "core.pager", "core.sshCommand", "credential.helper",
                    "diff.tool", "difftool.x.cmd", "gpg.program", "gpg.ssh.defaultKeyCommand",
                    "interactive.diffFilter", "merge.x.driver", "pager.config", "pager.diff",
                    "pager.rev-parse", "pager.status", "remote.origin.uploadpack",
                    "remote.origin.vcs", "sequence.editor", "submodule.x.update",
                    "uploadpack.packObjectsHook"),
    [](const auto &key) {
        std::string name(key.param);
        std::erase_if(name, [](char character) { return std::isalnum(character) == 0; });
        return name;
    });

TEST_F(RepositoryTraps, HooksAreNotRun)
{
    changeFile();
    configure(u"core.hooksPath"_s, m_repository.pathOutside(u"hooks"_s));
    QDir().mkpath(m_repository.pathOutside(u"hooks"_s));
    for (const QString &hook : {u"post-index-change"_s, u"fsmonitor-watchman"_s,
                                u"reference-transaction"_s, u"pre-auto-gc"_s}) {
        m_repository.link(u"../hooks/"_s + hook, QFile::encodeName(trap(hook)));
    }

    EXPECT_TRUE(changedFiles());
    EXPECT_EQ(marks(), QStringList());
}

} // namespace
} // namespace vantrel
