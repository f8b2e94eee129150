#include "ai/config/AIProviderConfig.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

std::optional<QUrl> validated(const QString &text)
{
    return AIProviderConfig::validatedBaseURL(text);
}

AIProviderConfig complete(AIProvider provider)
{
    AIProviderConfig config;
    config.provider = provider;
    config.baseURL = u"https://example.com/v1"_s;
    config.model = u"some-model"_s;
    return config;
}

TEST(ValidatedBaseURL, AcceptsHttpAndHttps)
{
    EXPECT_EQ(validated(u"http://localhost:1234/v1"_s), QUrl(u"http://localhost:1234/v1"_s));
    EXPECT_EQ(validated(u"https://example.com/api/v1"_s), QUrl(u"https://example.com/api/v1"_s));
}

TEST(ValidatedBaseURL, TrimsBlanksAndLineBreaks)
{
    EXPECT_EQ(validated(u" \t\r\nhttps://example.com/v1 \n"_s), QUrl(u"https://example.com/v1"_s));
}

TEST(ValidatedBaseURL, AcceptsASchemeInCapitals)
{
    EXPECT_EQ(validated(u"HTTPS://example.com/v1"_s), QUrl(u"https://example.com/v1"_s));
}

TEST(ValidatedBaseURL, RejectsFtp)
{
    EXPECT_EQ(validated(u"ftp://example.com/v1"_s), std::nullopt);
}

TEST(ValidatedBaseURL, RejectsHostAndPortWithoutAScheme)
{
    EXPECT_EQ(validated(u"localhost:1234"_s), std::nullopt);
}

TEST(ValidatedBaseURL, RejectsAHostWithoutAScheme)
{
    EXPECT_EQ(validated(u"example.com/v1"_s), std::nullopt);
    EXPECT_EQ(validated(u"//example.com/v1"_s), std::nullopt);
}

TEST(ValidatedBaseURL, RejectsABlankText)
{
    EXPECT_EQ(validated(QString()), std::nullopt);
    EXPECT_EQ(validated(u" \n"_s), std::nullopt);
}

TEST(ValidatedBaseURL, RejectsWhatDoesNotParse)
{
    EXPECT_EQ(validated(u"https://exam ple.com/v1"_s), std::nullopt);
    EXPECT_EQ(validated(u"https://example.com:port/v1"_s), std::nullopt);
    EXPECT_EQ(validated(u"https://[::1/v1"_s), std::nullopt);
}

TEST(ValidatedBaseURL, DoesNotTestTheHost)
{
    EXPECT_EQ(validated(u"https:///v1"_s), QUrl(u"https:///v1"_s));
    EXPECT_TRUE(validated(u"https:"_s).has_value());
}

TEST(ValidatedBaseURL, KeepsPathAndPort)
{
    EXPECT_EQ(validated(u"http://127.0.0.1:8080/openai/v1/"_s),
              QUrl(u"http://127.0.0.1:8080/openai/v1/"_s));
}

TEST(NeedsSetup, IsFalseForACompleteConfigurationWithItsKey)
{
    EXPECT_FALSE(complete(AIProvider::openRouter).needsSetup(false));
    EXPECT_FALSE(complete(AIProvider::openAI).needsSetup(false));
}

TEST(NeedsSetup, IsFalseWhenNothingIsKnownAboutTheKey)
{
    EXPECT_FALSE(complete(AIProvider::openRouter).needsSetup(std::nullopt));
}

TEST(NeedsSetup, IsTrueWhenTheKeyIsKnownToBeMissing)
{
    EXPECT_TRUE(complete(AIProvider::openRouter).needsSetup(true));
    EXPECT_TRUE(complete(AIProvider::openAI).needsSetup(true));
}

TEST(NeedsSetup, IsFalseForACustomProviderWithoutAKey)
{
    EXPECT_FALSE(complete(AIProvider::custom).needsSetup(true));
}

TEST(NeedsSetup, IsTrueForABlankModel)
{
    AIProviderConfig config = complete(AIProvider::custom);
    config.model = u" \n"_s;

    EXPECT_TRUE(config.needsSetup(false));
}

TEST(NeedsSetup, IsTrueForABaseURLThatDoesNotValidate)
{
    AIProviderConfig config = complete(AIProvider::custom);
    config.baseURL = u"localhost:1234"_s;

    EXPECT_TRUE(config.needsSetup(false));
}

TEST(AIProviderConfig, ComparesAllThreeFields)
{
    const AIProviderConfig config = complete(AIProvider::openAI);
    AIProviderConfig otherURL = config;
    otherURL.baseURL += u' ';
    AIProviderConfig otherModel = config;
    otherModel.model += u' ';

    EXPECT_EQ(config, complete(AIProvider::openAI));
    EXPECT_NE(config, complete(AIProvider::custom));
    EXPECT_NE(config, otherURL);
    EXPECT_NE(config, otherModel);
}

} // namespace
} // namespace vantrel
