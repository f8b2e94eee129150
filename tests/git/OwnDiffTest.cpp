#include "git/OwnDiff.h"

#include "TrapTest.h"

#include "git/GitPrefix.h"
#include "models/DiffParser.h"

#include <QDir>
#include <QFile>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(OwnDiff, IsTheSameDiffToldToIgnoreThePrograms)
{
    const QByteArray command = ownDiffCommand(
        gitPrefix() + QStringList{u"diff"_s, u"HEAD"_s, u"--no-renames"_s, u"--"_s, u"f"_s},
        Conversions::ignore);

    EXPECT_EQ(command.mid(command.indexOf("exec")),
              "exec git '-c' 'core.fsmonitor=' '-c' 'core.pager=cat' '--no-optional-locks' 'diff' "
              "--no-ext-diff --diff-filter=$f --no-textconv 'HEAD' '--no-renames' -- \"$1\" #");
}

TEST(OwnDiff, KeepsThePersonsConversions)
{
    const QByteArray command = ownDiffCommand(
        gitPrefix() + QStringList{u"diff"_s, u"--cached"_s, u"--"_s, u"f"_s}, Conversions::run);

    EXPECT_TRUE(command.endsWith("--no-ext-diff --diff-filter=$f '--cached' -- \"$1\" #"));
}

/// A repository with changes of every kind, and one that diff programs are configured for.
class OwnDiffOfEveryKind : public test::TrapTest
{
protected:
    OwnDiffOfEveryKind()
    {
        commitSubmodule();
        for (const QString &name : m_names) {
            m_repository.write(name, test::numberedLines(9));
        }
        m_repository.write(u"binary"_s, QByteArray("a\0b", 3));
        m_repository.write(u"crlf"_s, "one\r\ntwo\r\n");
        m_repository.write(u"native-crlf"_s, "one\r\ntwo\r\n");
        m_repository.write(u".gitattributes"_s, "native-crlf text eol=crlf\n");
        m_repository.write(u"folder-then-file/inside"_s, "one\n");
        m_repository.link(u"link"_s, "target");
        m_repository.commitAll();
        makeConflict();
        changeEverything();
    }

    /// Asks for the diff of each path, against HEAD and in the other two forms.
    QList<QList<RawHunk>> allHunks()
    {
        EXPECT_TRUE(m_guard.inspect(m_repository.root()));
        QList<QList<RawHunk>> hunks;
        const QList<FileChange> files = changedFiles().value();
        for (const FileChange &file : files) {
            hunks.append(file.hunks);
            for (const QString &form : {u"--no-renames"_s, u"--cached"_s}) {
                const auto diff = m_guard.run(
                    u"git"_s, gitPrefix() + QStringList{u"diff"_s, form, u"--"_s, file.path},
                    m_repository.root());
                hunks.append(parseUnifiedDiff(diff.value()));
            }
        }
        return hunks;
    }

    const QStringList m_names{u"deleted"_s,
                              u"emptied"_s,
                              u"file-then-folder"_s,
                              u"file-then-link"_s,
                              u"mode"_s,
                              u"staged"_s,
                              u"with spaces"_s,
                              u"quote's \"x\""_s,
                              u"line\nfeed"_s,
                              u"-dash"_s,
                              u":!colon"_s,
                              u"*"_s,
                              u"[a]"_s,
                              u"$HOME"_s,
                              u"`id`"_s,
                              u"back\\slash"_s,
                              u"x:/dev/null"_s,
                              QStringLiteral("\u00e9")};

private:
    void commitSubmodule() const
    {
        m_repository.git({u"init"_s, u"--quiet"_s, u"sub"_s});
        m_repository.git(
            {u"-C"_s, u"sub"_s, u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"--message=One"_s});
        m_repository.write(u"sub/f"_s, "one\n");
        m_repository.git({u"-c"_s, u"advice.addEmbeddedRepo=false"_s, u"add"_s, u"sub"_s});
    }

    void makeConflict() const
    {
        m_repository.write(u"conflict"_s, "base\n");
        m_repository.commitAll();
        m_repository.git({u"checkout"_s, u"--quiet"_s, u"-b"_s, u"other"_s});
        m_repository.write(u"conflict"_s, "theirs\n");
        m_repository.commitAll();
        m_repository.git({u"checkout"_s, u"--quiet"_s, u"main"_s});
        m_repository.write(u"conflict"_s, "ours\n");
        m_repository.commitAll();
        ASSERT_EQ(m_repository.gitStatus({u"merge"_s, u"other"_s}), 1);
    }

    void changeEverything() const
    {
        for (const QString &name : m_names) {
            m_repository.write(name, test::numberedLines(9, {5}));
        }
        m_repository.git({u"add"_s, u"staged"_s});
        m_repository.write(u"staged"_s, test::numberedLines(9, {7}));
        m_repository.remove(u"deleted"_s);
        m_repository.write(u"emptied"_s, {});
        m_repository.write(u"mode"_s, test::numberedLines(9));
        QFile::setPermissions(m_repository.path(u"mode"_s),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        m_repository.remove(u"file-then-folder"_s);
        m_repository.write(u"file-then-folder/inside"_s, "new\n");
        m_repository.git({u"add"_s, u"file-then-folder/inside"_s});
        QDir(m_repository.path(u"folder-then-file"_s)).removeRecursively();
        m_repository.write(u"folder-then-file"_s, "new\n");
        m_repository.link(u"file-then-link"_s, "target");
        m_repository.link(u"link"_s, "elsewhere");
        m_repository.write(u"binary"_s, QByteArray("a\0c", 3));
        m_repository.write(u"crlf"_s, "one\r\nthree\r\n");
        m_repository.write(u"native-crlf"_s, "one\r\nthree\r\n");
        m_repository.write(u"added"_s, "new\n");
        m_repository.write(u"added-binary"_s, QByteArray("a\0b", 3));
        m_repository.write(u"added-empty"_s, {});
        m_repository.git({u"add"_s, u"added"_s, u"added-binary"_s, u"added-empty"_s});
        m_repository.git(
            {u"-C"_s, u"sub"_s, u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"--message=Two"_s});
    }
};

TEST_F(OwnDiffOfEveryKind, IsTheSameInPlaceOfAnExternalDiff)
{
    const QList<QList<RawHunk>> before = allHunks();
    configure(u"diff.external"_s, trap(u"external"_s));

    EXPECT_EQ(allHunks(), before);
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(OwnDiffOfEveryKind, IsTheSameInPlaceOfADriversCommand)
{
    setAttributes("diff=images");
    const QList<QList<RawHunk>> before = allHunks();
    configure(u"diff.images.command"_s, trap(u"command"_s));

    EXPECT_EQ(allHunks(), before);
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(OwnDiffOfEveryKind, IsTheSameInPlaceOfACommandForSomeOfThePathsInAFolder)
{
    m_repository.write(u".git/info/attributes"_s, "inside diff=images\n");
    const QList<QList<RawHunk>> before = allHunks();
    configure(u"diff.images.command"_s, trap(u"command"_s));

    EXPECT_EQ(allHunks(), before);
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(OwnDiffOfEveryKind, IsTheSameInPlaceOfConversions)
{
    setAttributes("diff=images");
    const QList<QList<RawHunk>> before = allHunks();
    configure(u"diff.images.textconv"_s, readerTrap(u"conversion"_s));

    EXPECT_EQ(allHunks(), before);
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(OwnDiffOfEveryKind, IsTheSameInPlaceOfThePersonsExternalDiff)
{
    const QList<QList<RawHunk>> before = allHunks();
    configurePerson("[diff]\n\texternal = true\n");

    EXPECT_EQ(allHunks(), before);
}

} // namespace
} // namespace vantrel
