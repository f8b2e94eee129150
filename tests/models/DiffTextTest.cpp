#include "models/DiffText.h"
#include "RecordMakers.h"
#include "models/FileChange.h"
#include "models/Hunk.h"
#include "models/RowAligner.h"

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;
using namespace test;

namespace {

FileChange fileOf(const QList<RawHunk> &hunks)
{
    FileChange file;
    file.hunks = hunks;
    return file;
}

Hunk hunkOf(const QList<RawDiffLine> &lines)
{
    Hunk hunk;
    hunk.rows = alignRows(1, 1, lines);
    return hunk;
}

} // namespace

TEST(FileDiffText, JoinsThePrefixedLinesOfAllHunksWithoutHeaders)
{
    const RawHunk first{
        slice("@@ -1,2 +1,2 @@"), 1, 1, {context("a"), deletion("b"), addition("c")}};
    const RawHunk second{slice("@@ -9,0 +9 @@"), 9, 9, {addition("d")}};

    EXPECT_EQ(fileDiffText(fileOf({first, second})), u" a\n-b\n+c\n+d"_s);
}

TEST(FileDiffText, AFileWithoutLinesHasAnEmptyText)
{
    EXPECT_EQ(fileDiffText(fileOf({})), QString());
    EXPECT_EQ(fileDiffText(fileOf({RawHunk()})), QString());
}

TEST(FileDiffText, AnEmptyLineIsItsPrefix)
{
    const RawHunk hunk{slice("@@ -1 +1,2 @@"), 1, 1, {context(""), addition(""), addition("")}};

    EXPECT_EQ(fileDiffText(fileOf({hunk})), u" \n+\n+"_s);
}

TEST(FileDiffText, KeepsTheOrderOfTheDiff)
{
    const RawHunk hunk{slice("@@ -1,2 +1,2 @@"),
                       1,
                       1,
                       {deletion("a"), deletion("b"), addition("A"), addition("B")}};

    EXPECT_EQ(fileDiffText(fileOf({hunk})), u"-a\n-b\n+A\n+B"_s);
}

TEST(FileDiffText, ALineIsReadByItself)
{
    // Each ends within a character, and would swallow the line feed or the next line's beginning.
    const RawHunk hunk{slice("@@ -1 +1,3 @@"),
                       1,
                       1,
                       {addition("a\xf0\x9f"), addition("\x91\x8d"), addition("👍 é 日"),
                        addition("\xef\xbb\xbfx")}};

    const QString text = fileDiffText(fileOf({hunk}));

    const QStringList lines = text.split(u'\n');
    ASSERT_EQ(lines.size(), 4);
    for (qsizetype index = 0; index < lines.size(); ++index) {
        EXPECT_EQ(lines[index], u'+' + hunk.lines[index].text.toString());
    }
}

TEST(HunkDiffText, ARowsDeletionStandsBeforeItsAddition)
{
    const Hunk hunk =
        hunkOf({deletion("a"), deletion("b"), addition("A"), addition("B"), context("c")});

    EXPECT_EQ(hunkDiffText(hunk), u"-a\n+A\n-b\n+B\n c"_s);
}

TEST(HunkDiffText, FillersAreNoLines)
{
    EXPECT_EQ(hunkDiffText(hunkOf({deletion("a"), deletion("b"), addition("A")})), u"-a\n+A\n-b"_s);
    EXPECT_EQ(hunkDiffText(hunkOf({context("a"), addition("b")})), u" a\n+b"_s);
}

TEST(HunkDiffText, AHunkWithoutRowsHasAnEmptyText)
{
    EXPECT_EQ(hunkDiffText(Hunk()), QString());
}

TEST(HunkDiffText, TextBeyondAsciiAndCarriageReturnsAreKept)
{
    EXPECT_EQ(hunkDiffText(hunkOf({context("größe\r"), addition("\xef\xbb\xbf👍")})),
              u" größe\r\n+\uFEFF👍"_s);
}

} // namespace vantrel
