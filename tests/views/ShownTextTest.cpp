#include "views/ShownText.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(ShownText, LeavesOrdinaryTextAsItIs)
{
    EXPECT_EQ(shownText(u""), QString());
    EXPECT_EQ(shownText(u"Two lines,\nof words."), u"Two lines,\nof words."_s);
}

TEST(ShownText, OffersAPlaceToBreakEvery200CharactersOfARun)
{
    const QString run(200, u'x');

    EXPECT_EQ(shownText(run), run);
    EXPECT_EQ(shownText(run + u'y'), run + u"\u200By"_s);
    EXPECT_EQ(shownText(run + u' ' + run), run + u' ' + run);
    EXPECT_EQ(shownText(run + run + u"z"_s), run + u'\u200B' + run + u"\u200Bz"_s);
}

TEST(ShownText, NeverBreaksWithinACharacter)
{
    const QString run(199, u'x');
    const QString face = u"\U0001F600"_s;

    EXPECT_EQ(shownText(run + face + u'y'), run + face + u"\u200By"_s);
    EXPECT_EQ(shownText(run + u"e\u0301\u0302y"_s), run + u"e\u0301\u0302\u200By"_s);
}

TEST(ShownText, CutsWhatIsLongerThan20000CharactersWithAnEllipsis)
{
    const QString words = u"word "_s.repeated(4'000);

    EXPECT_EQ(shownText(words), words);
    EXPECT_EQ(shownText(words + u'x'), words + u'…');
}

TEST(ShownText, CutsBeforeACharacterThatWouldBeTorn)
{
    const QString words = u"word "_s.repeated(3'999) + u"abcd"_s;

    EXPECT_EQ(shownText(words + u"\U0001F600 and more"_s), words + u'…');
    EXPECT_EQ(shownText(words + u"e\u0301 and more"_s), words + u'…');
}

} // namespace
} // namespace vantrel::test
