#include "ai/config/AIProvider.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(AIProvider, IsListedInTheOrderOfTheLists)
{
    const std::array expected{AIProvider::openRouter, AIProvider::openAI, AIProvider::custom};

    EXPECT_EQ(allAIProviders, expected);
}

TEST(AIProvider, HasAStoredForm)
{
    EXPECT_EQ(rawValue(AIProvider::openRouter), u"openRouter"_s);
    EXPECT_EQ(rawValue(AIProvider::openAI), u"openAI"_s);
    EXPECT_EQ(rawValue(AIProvider::custom), u"custom"_s);
}

TEST(AIProvider, IsReadFromItsStoredForm)
{
    EXPECT_EQ(aiProviderFromRawValue(u"openRouter"), AIProvider::openRouter);
    EXPECT_EQ(aiProviderFromRawValue(u"openAI"), AIProvider::openAI);
    EXPECT_EQ(aiProviderFromRawValue(u"custom"), AIProvider::custom);
}

TEST(AIProvider, IsNotReadFromAnythingElse)
{
    EXPECT_EQ(aiProviderFromRawValue(u"OpenRouter"), std::nullopt);
    EXPECT_EQ(aiProviderFromRawValue(u"openAI "), std::nullopt);
    EXPECT_EQ(aiProviderFromRawValue(u""), std::nullopt);
    EXPECT_EQ(aiProviderFromRawValue(u"local"), std::nullopt);
}

TEST(AIProvider, HasADisplayName)
{
    EXPECT_EQ(displayName(AIProvider::openRouter), u"OpenRouter"_s);
    EXPECT_EQ(displayName(AIProvider::openAI), u"OpenAI"_s);
    EXPECT_EQ(displayName(AIProvider::custom), u"Custom"_s);
}

TEST(AIProvider, HasADefaultBaseURLUnlessItIsCustom)
{
    EXPECT_EQ(defaultBaseURL(AIProvider::openRouter), u"https://openrouter.ai/api/v1"_s);
    EXPECT_EQ(defaultBaseURL(AIProvider::openAI), u"https://api.openai.com/v1"_s);
    EXPECT_EQ(defaultBaseURL(AIProvider::custom), QString());
}

TEST(AIProvider, NeedsAKeyUnlessItIsCustom)
{
    EXPECT_TRUE(requiresAPIKey(AIProvider::openRouter));
    EXPECT_TRUE(requiresAPIKey(AIProvider::openAI));
    EXPECT_FALSE(requiresAPIKey(AIProvider::custom));
}

} // namespace
} // namespace vantrel
