#include "git/StatusRecords.h"

#include "ListingSamples.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::trackedFile;
using test::untrackedFile;

QList<FileChange> parse(const QByteArray &output)
{
    return parseStatusRecords(TextSlice::fromUtf8(output));
}

/// The one file in a record of these two letters.
QList<FileChange> parseLetters(const QByteArray &letters)
{
    return parse(letters + QByteArray(" f\0", 3));
}

QList<FileChange> oneFile(ChangeStatus status)
{
    return {trackedFile(u"f"_s, status, 0, 0, {})};
}

TEST(StatusRecords, AnEmptyOutputHasNoFiles)
{
    EXPECT_EQ(parse({}), QList<FileChange>());
}

TEST(StatusRecords, AnUntrackedFileInANestedFolderKeepsItsWholePath)
{
    EXPECT_EQ(parse(QByteArray("?? a/b/c.txt\0", 13)),
              (QList<FileChange>{untrackedFile(u"a/b/c.txt"_s, 0, {})}));
}

TEST(StatusRecords, AQuestionMarkInTheIndexAloneIsAddedAndTracked)
{
    EXPECT_EQ(parseLetters("?D"), oneFile(ChangeStatus::added));
}

TEST(StatusRecords, AQuestionMarkInTheWorkingTreeAloneIsAddedAndTracked)
{
    EXPECT_EQ(parseLetters("D?"), oneFile(ChangeStatus::added));
}

TEST(StatusRecords, DeletedInTheWorkingTreeIsDeleted)
{
    EXPECT_EQ(parseLetters(" D"), oneFile(ChangeStatus::deleted));
}

TEST(StatusRecords, DeletedInTheIndexIsDeleted)
{
    EXPECT_EQ(parseLetters("D "), oneFile(ChangeStatus::deleted));
}

TEST(StatusRecords, AddedToTheIndexAndDeletedFromTheWorkingTreeIsDeleted)
{
    EXPECT_EQ(parseLetters("AD"), oneFile(ChangeStatus::deleted));
}

TEST(StatusRecords, AddedToTheIndexIsAdded)
{
    EXPECT_EQ(parseLetters("A "), oneFile(ChangeStatus::added));
}

TEST(StatusRecords, AddedToTheIndexAndModifiedSinceIsAdded)
{
    EXPECT_EQ(parseLetters("AM"), oneFile(ChangeStatus::added));
}

TEST(StatusRecords, AddedInTheWorkingTreeAloneIsModified)
{
    EXPECT_EQ(parseLetters(" A"), oneFile(ChangeStatus::modified));
}

TEST(StatusRecords, ModifiedInTheWorkingTreeIsModified)
{
    EXPECT_EQ(parseLetters(" M"), oneFile(ChangeStatus::modified));
}

TEST(StatusRecords, ModifiedInBothIsModified)
{
    EXPECT_EQ(parseLetters("MM"), oneFile(ChangeStatus::modified));
}

TEST(StatusRecords, AChangedTypeIsModified)
{
    EXPECT_EQ(parseLetters(" T"), oneFile(ChangeStatus::modified));
}

TEST(StatusRecords, AConflictIsModified)
{
    EXPECT_EQ(parseLetters("UU"), oneFile(ChangeStatus::modified));
}

TEST(StatusRecords, KeepsTheOrderAndPassesOverEmptyPieces)
{
    const QList<FileChange> files = parse(QByteArray("\0 M b\0\0?? a\0", 12));

    EXPECT_EQ(files, (QList<FileChange>{trackedFile(u"b"_s, ChangeStatus::modified, 0, 0, {}),
                                        untrackedFile(u"a"_s, 0, {})}));
}

TEST(StatusRecords, SkipsARecordOfLessThanFourCharacters)
{
    EXPECT_EQ(parse(QByteArray("M \0 M \0 M f\0", 12)), oneFile(ChangeStatus::modified));
}

TEST(StatusRecords, ReadsALastRecordWithoutItsNulCharacter)
{
    EXPECT_EQ(parse(" M f"), oneFile(ChangeStatus::modified));
}

TEST(StatusRecords, KeepsAPathWithSpacesAndNonAsciiLettersAsItIs)
{
    EXPECT_EQ(parse(QByteArray("A   a \xc3\xa9 -> \n\"b\" \0", 18)),
              (QList<FileChange>{trackedFile(QStringLiteral(" a \u00e9 -> \n\"b\" "),
                                             ChangeStatus::added, 0, 0, {})}));
}

TEST(StatusRecords, KeepsTheByteOrderMarksThatBeginAPath)
{
    EXPECT_EQ(parse(QByteArray("?? \xef\xbb\xbf\xef\xbb\xbf"
                               "f\0",
                               11)),
              (QList<FileChange>{untrackedFile(QStringLiteral("\uFEFF\uFEFFf"), 0, {})}));
}

TEST(StatusRecords, APathThatOccursTwiceKeepsItsFirstRecord)
{
    EXPECT_EQ(parse(QByteArray("D  f\0?? f\0", 10)), oneFile(ChangeStatus::deleted));
}

} // namespace
} // namespace vantrel
