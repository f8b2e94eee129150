#include "ai/SuggestedQuestions.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(SuggestedQuestions, AreReadFromAnArray)
{
    EXPECT_EQ(parseSuggestedQuestions(u"[\"Why?\", \"How?\"]"_s),
              (QStringList{u"Why?"_s, u"How?"_s}));
}

TEST(SuggestedQuestions, AreReadFromACodeFenceWithoutBlanksAndRepeats)
{
    EXPECT_EQ(parseSuggestedQuestions(u"```json\n[\"Why?\", \"why?\", \" \", \"Why?\"]\n```"_s),
              (QStringList{u"Why?"_s, u"why?"_s}));
}

TEST(SuggestedQuestions, AreReadFromAFenceWithoutALanguage)
{
    EXPECT_EQ(parseSuggestedQuestions(u" \n```\n[\"Why?\"]```  "_s), QStringList{u"Why?"_s});
}

TEST(SuggestedQuestions, AreReadFromTheMiddleOfProse)
{
    EXPECT_EQ(parseSuggestedQuestions(u"Here you are: [\"Why?\"] - good luck"_s),
              QStringList{u"Why?"_s});
}

TEST(SuggestedQuestions, AreTrimmedBeforeTheyAreCompared)
{
    EXPECT_EQ(parseSuggestedQuestions(u"[\" Why?\\n\", \"Why?\", \"\"]"_s), QStringList{u"Why?"_s});
}

TEST(SuggestedQuestions, AreNotLimitedInNumber)
{
    EXPECT_EQ(parseSuggestedQuestions(u"[\"a\",\"b\",\"c\",\"d\",\"e\"]"_s).size(), 5);
}

class NoQuestionsTest : public testing::TestWithParam<QString>
{};

TEST_P(NoQuestionsTest, GivesAnEmptyList)
{
    EXPECT_EQ(parseSuggestedQuestions(GetParam()), QStringList());
}

INSTANTIATE_TEST_SUITE_P(SuggestedQuestions, NoQuestionsTest,
                         testing::Values(QString(), u"What about the tests?"_s, u"[]"_s,
                                         u"[\"Why?\", 1]"_s, u"[\"Why?\", null]"_s,
                                         u"{\"questions\": \"none\"}"_s, u"] back to front ["_s,
                                         u"[\"Why?\""_s, u"see [1] and [2]"_s, u"```json```"_s));

} // namespace
} // namespace vantrel
