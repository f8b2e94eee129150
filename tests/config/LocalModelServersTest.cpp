#include "ai/config/LocalModelServers.h"

#include "ai/config/AIProviderConfig.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(LocalModelServers, ListenOnTheirUsualPorts)
{
    EXPECT_EQ(lmStudioBaseURL, u"http://localhost:1234/v1"_s);
    EXPECT_EQ(ollamaBaseURL, u"http://localhost:11434/v1"_s);
}

TEST(LocalModelServers, HaveBaseURLsThatValidate)
{
    EXPECT_EQ(AIProviderConfig::validatedBaseURL(lmStudioBaseURL), QUrl(lmStudioBaseURL));
    EXPECT_EQ(AIProviderConfig::validatedBaseURL(ollamaBaseURL), QUrl(ollamaBaseURL));
}

} // namespace
} // namespace vantrel
