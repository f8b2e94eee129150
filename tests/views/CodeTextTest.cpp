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
    EXPECT_EQ(codeColumns(TextSlice::fromString(u"漢"_s)), 1);
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

} // namespace
} // namespace vantrel::test
