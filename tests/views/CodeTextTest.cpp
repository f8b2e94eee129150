#include "views/CodeText.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QString drawn(const QString &line)
{
    const TextSlice slice = TextSlice::fromString(line);
    return visibleCode(slice, 0, codeColumns(slice));
}

TEST(CodeText, PrintableTextStandsAsItIs)
{
    const QString line = u"if (a < b) { // größer, 漢字"_s;

    EXPECT_EQ(drawn(line), line);
}

TEST(CodeText, ATabReachesToTheNextMultipleOfFourColumns)
{
    EXPECT_EQ(drawn(u"\ta\tbc\tdef\tghij\t."_s), u"    a   bc  def ghij    ."_s);
}

TEST(CodeText, ControlCharactersStandAsTheirPictures)
{
    EXPECT_EQ(drawn(u"a\rb\u001B[31mc\u0000d\u007F"_s), u"a␍b␛[31mc␀d␡"_s);
}

TEST(CodeText, BidirectionalControlsStandAsTheirNumbers)
{
    EXPECT_EQ(drawn(u"\u202Ea\u2066b\u2069\u200Fc\u061C"_s),
              u"‹202E›a‹2066›b‹2069›‹200F›c‹061C›"_s);
}

TEST(CodeText, InvisibleCharactersStandAsTheirNumbers)
{
    EXPECT_EQ(drawn(u"\uFEFFa\u200Bb\u00ADc\u0085\u2028"_s),
              u"‹FEFF›a‹200B›b‹00AD›c‹0085›‹2028›"_s);
    EXPECT_EQ(drawn(u"a\U000E0041"_s), u"a‹E0041›"_s);
}

TEST(CodeText, CountsTheColumnsThatAreDrawn)
{
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"abc"_s)), 3);
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"a\tb"_s)), 5);
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"\u202E"_s)), 6);
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"é→я"_s)), 3);
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"漢😀"_s)), 4);
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"e\u0301x"_s)), 2);
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"\u0301x"_s)), 2) << "nothing to stand on";
    EXPECT_EQ(codeColumns(TextSlice()), 0);
}

TEST(CodeText, AnyWindowIsThatPartOfTheWholeLine)
{
    const TextSlice line = TextSlice::fromString(u"a\tb\u202Ec\u0001\tdef"_s);
    const QString whole = drawn(line.toString());

    for (qsizetype first = 0; first <= whole.size() + 2; ++first) {
        for (qsizetype count = 0; count <= whole.size() + 2; ++count) {
            EXPECT_EQ(visibleCode(line, first, count), whole.mid(first, count))
                << first << " " << count;
        }
    }
}

TEST(CodeText, ACharacterOutsideTheBasicPlaneStaysWhole)
{
    EXPECT_EQ(visibleCode(TextSlice::fromString(u"a😀b"_s), 1, 1), u"😀"_s);
}

TEST(CodeText, CharactersOfOtherWidthHaveRunsOfTheirOwn)
{
    const TextSlice line = TextSlice::fromString(u"a漢字\tb→→c"_s);

    EXPECT_EQ(codeRuns(line, 0, 100), (QList<CodeRun>{{0, 1, u"a"_s},
                                                      {1, 3, u"漢"_s},
                                                      {3, 5, u"字"_s},
                                                      {5, 9, u"   b"_s},
                                                      {9, 11, u"→→"_s},
                                                      {11, 12, u"c"_s}}));
}

TEST(CodeText, ACombiningMarkStaysWithItsCharacter)
{
    const TextSlice line = TextSlice::fromString(u"ae\u0301漢\u0301b"_s);

    EXPECT_EQ(codeRuns(line, 0, 100),
              (QList<CodeRun>{{0, 2, u"ae\u0301"_s}, {2, 4, u"漢\u0301"_s}, {4, 5, u"b"_s}}));
    EXPECT_EQ(codeRuns(line, 0, 2), (QList<CodeRun>{{0, 2, u"ae\u0301"_s}}));
    EXPECT_EQ(codeRuns(line, 2, 2), (QList<CodeRun>{{2, 4, u"漢\u0301"_s}}));
}

TEST(CodeText, AWideCharacterIsDrawnAsLongAsHalfOfItIsInView)
{
    const TextSlice line = TextSlice::fromString(u"漢字b"_s);

    EXPECT_EQ(codeRuns(line, 1, 1), (QList<CodeRun>{{0, 2, u"漢"_s}}));
    EXPECT_EQ(codeRuns(line, 1, 2), (QList<CodeRun>{{0, 2, u"漢"_s}, {2, 4, u"字"_s}}));
}

TEST(CodeText, AColumnLeadsToTheNearestCharacterAndBack)
{
    const TextSlice line = TextSlice::fromString(u"a\t漢e\u0301\u202Ez"_s);
    const QList<QPair<qsizetype, qsizetype>> offsetsAndColumns = {{0, 0}, {1, 1},   {2, 4},  {5, 6},
                                                                  {8, 7}, {11, 13}, {12, 14}};

    for (const auto &[offset, column] : offsetsAndColumns) {
        EXPECT_EQ(codeColumnAt(line, offset), column);
        EXPECT_EQ(codeOffsetAt(line, qreal(column)), offset);
    }
    EXPECT_EQ(codeOffsetAt(line, 2.4), 1) << "the nearer half of the tab";
    EXPECT_EQ(codeOffsetAt(line, 2.6), 2) << "the farther half of the tab";
    EXPECT_EQ(codeOffsetAt(line, 99), line.size());
}

TEST(CodeText, OffsetsLieBetweenCharactersThatStandOnTheirOwn)
{
    const TextSlice line = TextSlice::fromString(u"a漢e\u0301\u0302😀"_s);
    const QList<qsizetype> offsets = {0, 1, 4, 9, 13};

    for (qsizetype i = 1; i < offsets.size(); ++i) {
        EXPECT_EQ(codeOffsetAfter(line, offsets.at(i - 1)), offsets.at(i));
        EXPECT_EQ(codeOffsetBefore(line, offsets.at(i)), offsets.at(i - 1));
    }
    EXPECT_EQ(codeOffsetAfter(line, line.size()), line.size());
    EXPECT_EQ(codeOffsetBefore(line, 0), 0);
}

TEST(CodeText, AWordIsANameOrBlanksOrOneSign)
{
    const TextSlice line = TextSlice::fromString(u"if  (größe_2->x)"_s);

    EXPECT_EQ(codeWordAt(line, 1), (CodeSpan{0, 2}));
    EXPECT_EQ(codeWordAt(line, 2), (CodeSpan{2, 4}));
    EXPECT_EQ(codeWordAt(line, 4), (CodeSpan{4, 5}));
    EXPECT_EQ(codeWordAt(line, 9), (CodeSpan{5, 14}));
    EXPECT_EQ(codeWordAt(line, line.size()), (CodeSpan{17, 18}));
    EXPECT_EQ(codeWordAt(TextSlice(), 0), CodeSpan());
}

} // namespace
} // namespace vantrel::test
