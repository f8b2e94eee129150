#include "ai/AIServiceError.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

using Case = AIServiceError::Case;

struct FixedSentence
{
    Case kind = Case::requestFailed;
    QString sentence{};
    std::optional<QString> label{};
};

class FixedSentenceTest : public testing::TestWithParam<FixedSentence>
{};

TEST_P(FixedSentenceTest, HasItsDescriptionAndLink)
{
    AIServiceError error;
    error.kind = GetParam().kind;

    EXPECT_EQ(error.description(), GetParam().sentence);
    EXPECT_EQ(recoveryLabel(GetParam().sentence), GetParam().label);
    EXPECT_TRUE(isAIServiceErrorSentence(GetParam().sentence));
}

INSTANTIATE_TEST_SUITE_P(
    AIServiceError, FixedSentenceTest,
    testing::Values(
        FixedSentence{Case::missingAPIKey, u"Add an API key in Settings to use AI features."_s,
                      u"Add an API key in Settings →"_s},
        FixedSentence{Case::invalidAPIKey,
                      u"This API key was rejected by the provider. Check it in Settings."_s,
                      u"Check your API key in Settings →"_s},
        FixedSentence{Case::blankModel, u"Set a model in Settings to use AI features."_s,
                      u"Set a model in Settings →"_s},
        FixedSentence{Case::invalidBaseURL, u"The configured base URL isn't valid."_s,
                      u"Fix the base URL in Settings →"_s},
        FixedSentence{Case::invalidResponse, u"The AI provider returned an unexpected response."_s,
                      std::nullopt}));

TEST(AIServiceError, AFailedRequestSaysItsMessage)
{
    const AIServiceError error{Case::requestFailed, u"Request failed (status 404)."_s};

    EXPECT_EQ(error.description(), u"Request failed (status 404)."_s);
    EXPECT_EQ(recoveryLabel(error.description()), std::nullopt);
    EXPECT_FALSE(isAIServiceErrorSentence(error.description()));
}

TEST(AIServiceError, OnlyTheExactSentenceHasALink)
{
    const QStringList others{QString(), u"Set a model in Settings to use AI features"_s,
                             u" Set a model in Settings to use AI features."_s,
                             u"set a model in Settings to use AI features."_s,
                             u"Connection refused"_s};

    for (const QString &message : others) {
        EXPECT_EQ(recoveryLabel(message), std::nullopt);
        EXPECT_FALSE(isAIServiceErrorSentence(message));
    }
}

TEST(AIServiceError, APlatformFailureSaysThePlatformsSentence)
{
    const AIFailure failure(PlatformError{u"Connection refused"_s});

    EXPECT_EQ(failure.description(), u"Connection refused"_s);
    EXPECT_EQ(failure.serviceError(), nullptr);
}

} // namespace
} // namespace vantrel
