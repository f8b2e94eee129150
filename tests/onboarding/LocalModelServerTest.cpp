#include "onboarding/LocalModelServer.h"

#include "onboarding/LocalModelServerStatus.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(LocalModelServer, OllamaComesFirst)
{
    const std::array expected{LocalModelServer::ollama, LocalModelServer::lmStudio};

    EXPECT_EQ(allLocalModelServers, expected);
}

TEST(LocalModelServer, HasItsRawValueNameAndAddress)
{
    EXPECT_EQ(rawValue(LocalModelServer::ollama), u"ollama"_s);
    EXPECT_EQ(displayName(LocalModelServer::ollama), u"Ollama"_s);
    EXPECT_EQ(baseURL(LocalModelServer::ollama), u"http://localhost:11434/v1"_s);
    EXPECT_EQ(rawValue(LocalModelServer::lmStudio), u"lmStudio"_s);
    EXPECT_EQ(displayName(LocalModelServer::lmStudio), u"LM Studio"_s);
    EXPECT_EQ(baseURL(LocalModelServer::lmStudio), u"http://localhost:1234/v1"_s);
}

TEST(LocalModelServerStatus, HasATextForEverySituation)
{
    EXPECT_EQ(statusText(std::nullopt), u"Not checked"_s);
    EXPECT_EQ(statusText(LocalModelServerStatus::notRunning()), u"Not running"_s);
    EXPECT_EQ(statusText(LocalModelServerStatus::running({})),
              u"Running \u00B7 no models installed"_s);
    EXPECT_EQ(statusText(LocalModelServerStatus::running({u"a"_s})), u"Running \u00B7 1 model"_s);
    EXPECT_EQ(statusText(LocalModelServerStatus::running({u"a"_s, u"b"_s})),
              u"Running \u00B7 2 models"_s);
    EXPECT_EQ(statusText(LocalModelServerStatus::running(QStringList(1000, u"a"_s))),
              u"Running \u00B7 1000 models"_s);
}

TEST(LocalModelServerStatus, RunningWithoutModelsIsNotTheSameAsNotRunning)
{
    EXPECT_NE(LocalModelServerStatus::running({}), LocalModelServerStatus::notRunning());
    EXPECT_TRUE(LocalModelServerStatus::running({}).isRunning());
    EXPECT_FALSE(LocalModelServerStatus::notRunning().isRunning());
    EXPECT_EQ(LocalModelServerStatus::notRunning().models(), QStringList());
}

} // namespace
} // namespace vantrel
