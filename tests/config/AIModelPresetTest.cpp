#include "ai/config/AIModelPreset.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Presets, OfOpenRouterAreThreeWithTheRecommendedOneFirst)
{
    const QList<AIModelPreset> expected = {
        {u"google/gemini-3.8-flash"_s, u"Gemini 3.8 Flash"_s,
         u"Recommended. Fast and strong at code."_s},
        {u"openai/gpt-6-luna"_s, u"GPT-6 Luna"_s, u"Lowest cost."_s},
        {u"anthropic/claude-sonnet-5"_s, u"Claude Sonnet 5"_s,
         u"Highest quality. Costs more per review."_s},
    };

    EXPECT_EQ(presets(AIProvider::openRouter), expected);
}

TEST(Presets, OfOpenAIAreTwoWithTheRecommendedOneFirst)
{
    const QList<AIModelPreset> expected = {
        {u"gpt-6-luna"_s, u"GPT-6 Luna"_s, u"Recommended. Fast and low cost."_s},
        {u"gpt-6-sol"_s, u"GPT-6 Sol"_s, u"Higher quality. Costs more per review."_s},
    };

    EXPECT_EQ(presets(AIProvider::openAI), expected);
}

TEST(Presets, OfACustomProviderAreNone)
{
    EXPECT_EQ(presets(AIProvider::custom), QList<AIModelPreset>());
}

TEST(Presets, OfOneNameDifferInEveryField)
{
    const AIModelPreset luna = presets(AIProvider::openAI).first();
    AIModelPreset otherID = luna;
    otherID.id = u"gpt-6-sol"_s;
    AIModelPreset otherName = luna;
    otherName.displayName = u"Luna"_s;
    AIModelPreset otherNote = luna;
    otherNote.note = u"Lowest cost."_s;

    EXPECT_NE(luna, otherID);
    EXPECT_NE(luna, otherName);
    EXPECT_NE(luna, otherNote);
    EXPECT_NE(qHash(luna), qHash(otherNote));
    EXPECT_EQ(qHash(luna), qHash(presets(AIProvider::openAI).first()));
}

TEST(ModelDisplayName, IsThePresetsNameAfterTrimming)
{
    EXPECT_EQ(modelDisplayName(u" \tanthropic/claude-sonnet-5\r\n"_s, AIProvider::openRouter),
              u"Claude Sonnet 5"_s);
}

TEST(ModelDisplayName, IsTheTrimmedTextOfAnUnknownModel)
{
    EXPECT_EQ(modelDisplayName(u"  qwen3:32b \n"_s, AIProvider::custom), u"qwen3:32b"_s);
}

TEST(ModelDisplayName, IsTheTextItselfForAPresetOfAnotherProvider)
{
    EXPECT_EQ(modelDisplayName(u"gpt-6-sol"_s, AIProvider::openRouter), u"gpt-6-sol"_s);
}

TEST(ModelDisplayName, IsEmptyForABlankModel)
{
    EXPECT_EQ(modelDisplayName(u" \n"_s, AIProvider::openAI), QString());
}

TEST(PresetID, IsTheDefaultModelForABlankText)
{
    EXPECT_EQ(presetID(QString(), AIProvider::openRouter), u"google/gemini-3.8-flash"_s);
    EXPECT_EQ(presetID(u" \n\t "_s, AIProvider::openAI), u"gpt-6-luna"_s);
}

TEST(PresetID, IsNothingForABlankTextOfACustomProvider)
{
    EXPECT_EQ(presetID(u" "_s, AIProvider::custom), std::nullopt);
}

TEST(PresetID, IsFoundForAModelWithBlanksAroundIt)
{
    EXPECT_EQ(presetID(u"  gpt-6-sol\n"_s, AIProvider::openAI), u"gpt-6-sol"_s);
}

TEST(PresetID, IsNothingForAPresetOfAnotherProvider)
{
    EXPECT_EQ(presetID(u"  gpt-6-sol\n"_s, AIProvider::openRouter), std::nullopt);
}

TEST(PresetID, IsNothingForAnotherCase)
{
    EXPECT_EQ(presetID(u"GPT-6-Sol"_s, AIProvider::openAI), std::nullopt);
}

TEST(PresetID, IsNothingForADisplayName)
{
    EXPECT_EQ(presetID(u"GPT-6 Sol"_s, AIProvider::openAI), std::nullopt);
}

} // namespace
} // namespace vantrel
