#include "RecordMakers.h"
#include "models/DiffParser.h"

#include <gtest/gtest.h>

namespace vantrel {

using namespace test;

using RawHunks = QList<RawHunk>;

namespace {

RawHunk hunk(const QByteArray &header, std::int64_t oldStart, std::int64_t newStart,
             const QList<RawDiffLine> &lines)
{
    return RawHunk{slice(header), oldStart, newStart, lines};
}

} // namespace

TEST(ParseUnifiedDiff, AnEmptyTextHasNoHunks)
{
    EXPECT_EQ(parseUnifiedDiff(slice("")), RawHunks());
    EXPECT_EQ(parseUnifiedDiff(TextSlice()), RawHunks());
}

TEST(ParseUnifiedDiff, ANoticeOfABinaryFileHasNoHunks)
{
    const TextSlice text = slice("diff --git a/logo.png b/logo.png\n"
                                 "index 8f2b1c0..d41e7aa 100644\n"
                                 "Binary files a/logo.png and b/logo.png differ\n");

    EXPECT_EQ(parseUnifiedDiff(text), RawHunks());
}

TEST(ParseUnifiedDiff, LinesThatBeginWithSignsBeforeTheFirstHunkAreSkipped)
{
    const TextSlice text = slice("--- a/x\n+++ b/x\n context\n");

    EXPECT_EQ(parseUnifiedDiff(text), RawHunks());
}

TEST(ParseUnifiedDiff, ThePreambleIsDroppedAndTheLinesAreClassified)
{
    const TextSlice text = slice("diff --git a/x b/x\n"
                                 "index 587be6b..b77b4eb 100644\n"
                                 "--- a/x\n"
                                 "+++ b/x\n"
                                 "@@ -4,2 +4,2 @@ void run()\n"
                                 " kept\n"
                                 "-old\n"
                                 "+new\n");

    const RawHunks expected{hunk("@@ -4,2 +4,2 @@ void run()", 4, 4,
                                 {context("kept"), deletion("old"), addition("new")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, TwoHunksComeInOrderWithTheirOwnStarts)
{
    const TextSlice text = slice("@@ -1 +1 @@\n-a\n+b\n@@ -20,0 +21 @@\n+c\n");

    const RawHunks expected{hunk("@@ -1 +1 @@", 1, 1, {deletion("a"), addition("b")}),
                            hunk("@@ -20,0 +21 @@", 20, 21, {addition("c")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, TheNoNewlineMarkerIsDroppedAndDoesNotEndTheHunk)
{
    const TextSlice text = slice("@@ -1,2 +1,2 @@\n"
                                 " a\n"
                                 "-b\n"
                                 "\\ No newline at end of file\n"
                                 "+c\n"
                                 "\\ No newline at end of file\n");

    const RawHunks expected{
        hunk("@@ -1,2 +1,2 @@", 1, 1, {context("a"), deletion("b"), addition("c")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, EmptyAndUnknownLinesInsideAHunkAreSkipped)
{
    const TextSlice text = slice("@@ -1 +1 @@\n\n-a\nnoise\n@ -1\n+b\n\n\n");

    const RawHunks expected{hunk("@@ -1 +1 @@", 1, 1, {deletion("a"), addition("b")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, LinesOfOnlyAPrefixAreEmptyLines)
{
    const TextSlice text = slice("@@ -1,2 +1,2 @@\n \n-\n+\n");

    const RawHunks expected{
        hunk("@@ -1,2 +1,2 @@", 1, 1, {context(""), deletion(""), addition("")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, OnlyTheFirstCharacterIsThePrefix)
{
    const TextSlice text = slice("@@ -1,4 +1,4 @@\n--- a/x\n+++ b/x\n @@ -1 +1 @@\n+\\ No\n");

    const RawHunks expected{
        hunk("@@ -1,4 +1,4 @@", 1, 1,
             {deletion("-- a/x"), addition("++ b/x"), context("@@ -1 +1 @@"), addition("\\ No")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, ACarriageReturnStaysInTheLineAndTheHeader)
{
    const TextSlice text = slice("@@ -1 +1 @@ a\r\n-b\r\n+c\r\n");

    const RawHunks expected{hunk("@@ -1 +1 @@ a\r", 1, 1, {deletion("b\r"), addition("c\r")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, ALastLineWithoutALineFeedIsRead)
{
    EXPECT_EQ(parseUnifiedDiff(slice("@@ -1 +1 @@\n-a\n+b")),
              RawHunks({hunk("@@ -1 +1 @@", 1, 1, {deletion("a"), addition("b")})}));
    EXPECT_EQ(parseUnifiedDiff(slice("@@ -1 +1 @@")), RawHunks({hunk("@@ -1 +1 @@", 1, 1, {})}));
}

TEST(ParseUnifiedDiff, TheCountsOfAHeaderNeitherEndAHunkNorReserveForIt)
{
    const TextSlice few = slice("@@ -1,1 +1,1 @@\n a\n b\n c\n");
    const TextSlice huge = slice("@@ -1,9000000000000000000 +1,9000000000000000000 @@\n a\n");

    EXPECT_EQ(parseUnifiedDiff(few), RawHunks({hunk("@@ -1,1 +1,1 @@", 1, 1,
                                                    {context("a"), context("b"), context("c")})}));
    EXPECT_EQ(parseUnifiedDiff(huge),
              RawHunks({hunk("@@ -1,9000000000000000000 +1,9000000000000000000 @@", 1, 1,
                             {context("a")})}));
}

TEST(ParseUnifiedDiff, AHunkWithoutLinesIsAHunk)
{
    const TextSlice text = slice("@@ -1 +1 @@\n@@ broken\n@@\n");

    const RawHunks expected{hunk("@@ -1 +1 @@", 1, 1, {}), hunk("@@ broken", 0, 0, {}),
                            hunk("@@", 0, 0, {})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, TextBeyondAsciiIsKept)
{
    const TextSlice text = slice("@@ -1 +1 @@ größe\n-naïve\n+日本 👍\n");

    const RawHunks expected{
        hunk("@@ -1 +1 @@ größe", 1, 1, {deletion("naïve"), addition("日本 👍")})};
    EXPECT_EQ(parseUnifiedDiff(text), expected);
}

TEST(ParseUnifiedDiff, LinesLieInTheBytesOfTheDiff)
{
    const TextSlice text = slice("@@ -1 +1 @@\n-a\n+b\n");

    const QList<RawHunk> hunks = parseUnifiedDiff(text);

    EXPECT_EQ(hunks[0].header.utf8().data(), text.utf8().data());
    EXPECT_EQ(hunks[0].lines[0].text.utf8().data(), text.utf8().data() + 13);
    EXPECT_EQ(hunks[0].lines[1].text.utf8().data(), text.utf8().data() + 16);
}

TEST(ParseUnifiedDiff, LongHunksOfUnevenLinesAreWholeAndHoldLittleRoom)
{
    // What room a hunk needs cannot be told from its beginning: lines that get shorter, a hunk that
    // is followed by a longer one, and by short ones.
    QByteArray text;
    QList<QByteArrayList> bodies;
    for (const int lineCount : {20'000, 90'000, 5'000, 3}) {
        QByteArrayList lines;
        for (int number = 0; number < lineCount; ++number) {
            lines.append(QByteArray::number(number) +
                         QByteArray(number < lineCount / 4 ? 200 : number % 3, 'x'));
        }
        text += "@@ -0,0 +1 @@\n+" + lines.join("\n+") + '\n';
        bodies.append(lines);
    }

    const QList<RawHunk> hunks = parseUnifiedDiff(slice(text));

    ASSERT_EQ(hunks.size(), bodies.size());
    for (qsizetype index = 0; index < hunks.size(); ++index) {
        const QList<RawDiffLine> &lines = hunks[index].lines;
        ASSERT_EQ(lines.size(), bodies[index].size());
        for (qsizetype line = 0; line < lines.size(); ++line) {
            ASSERT_EQ(lines[line].text.utf8(), bodies[index][line]);
        }
        EXPECT_LE(lines.capacity() - lines.size(), lines.size() / 16);
    }
}

TEST(ParseUnifiedDiff, FinishedHunksHoldNoRoomToGrow)
{
    const QByteArray body = QByteArray("+line\n").repeated(1000);

    const QList<RawHunk> hunks =
        parseUnifiedDiff(slice(("@@ -0,0 +1,1000 @@\n" + body).repeated(3)));

    EXPECT_EQ(hunks.capacity(), 3);
    EXPECT_EQ(hunks[0].lines.capacity(), 1000);
    EXPECT_EQ(hunks[2].lines.capacity(), 1000);
}

} // namespace vantrel
