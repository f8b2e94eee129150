// Names that git or a shell could take for something else. Each stands beside files that a pattern
// would match.

#include "ListingSamples.h"
#include "RepositoryTest.h"

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::rawHunk;
using test::trackedFile;
using test::untrackedFile;

class GitNames : public test::RepositoryTest, public testing::WithParamInterface<QString>
{
protected:
    GitNames()
    {
        m_repository.write(u"a.txt"_s, "decoy\n");
        m_repository.write(u"a1.txt"_s, "decoy\n");
    }

    [[nodiscard]] FileChange listed(const QString &path)
    {
        const Listing listing = changedFiles();
        for (const FileChange &file : listing.value_or(QList<FileChange>())) {
            if (file.path == path) {
                return file;
            }
        }
        return {};
    }
};

TEST_P(GitNames, AModifiedFileHasItsOwnHunksAlone)
{
    m_repository.write(GetParam(), "one\n");
    m_repository.commitAll();
    m_repository.write(u"a.txt"_s, "changed decoy\n");
    m_repository.write(u"a1.txt"_s, "changed decoy\n");
    m_repository.write(GetParam(), "two\n");

    EXPECT_EQ(listed(GetParam()), trackedFile(GetParam(), ChangeStatus::modified, 1, 1,
                                              {rawHunk("@@ -1 +1 @@", 1, 1, {"-one", "+two"})}));
}

TEST_P(GitNames, AnUntrackedFileIsRead)
{
    m_repository.commitAll();
    m_repository.write(GetParam(), "one");

    EXPECT_EQ(listed(GetParam()),
              untrackedFile(GetParam(), 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+one"})}));
}

INSTANTIATE_TEST_SUITE_P(
    All, GitNames,
    testing::Values(u"with spaces.txt"_s, u" spaces around "_s, u"quote's \"here\".txt"_s,
                    u"line\nfeed.txt"_s, u"tab\tand\rreturn.txt"_s,
                    QStringLiteral("\u00e5 \u00df \u6f22\u5b57 \U0001F600.txt"),
                    QStringLiteral("e\u0301.txt"), QStringLiteral("\uFEFFmark.txt"), u"-n.txt"_s,
                    u"--cached"_s, u"HEAD"_s, u"a -> b"_s, u"@@x"_s, u":!a.txt"_s, u":(top)x"_s,
                    u"*.txt"_s, u"a[1].txt"_s, u"a?.txt"_s, u"100%41#?.txt"_s, u"back\\slash"_s,
                    u"$HOME"_s, u"folder/in ner/\u00e9.txt"_s));

} // namespace
} // namespace vantrel
