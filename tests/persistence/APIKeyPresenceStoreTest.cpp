#include "persistence/APIKeyPresenceStore.h"

#include "ai/config/AIProviderConfig.h"
#include "platform/UserDefaults.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

class APIKeyPresenceStoreTest : public testing::Test
{
protected:
    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    APIKeyPresenceStore presence{defaults};
};

TEST_F(APIKeyPresenceStoreTest, NothingIsKnownInAFreshPreferencesStore)
{
    EXPECT_EQ(presence.isKnownMissing(AIProvider::openRouter), std::nullopt);
    EXPECT_EQ(presence.isKnownMissing(AIProvider::openAI), std::nullopt);
    EXPECT_EQ(presence.isKnownMissing(AIProvider::custom), std::nullopt);
}

TEST_F(APIKeyPresenceStoreTest, AFirstLaunchWithACompleteConfigurationCountsNoKeyAsMissing)
{
    AIProviderConfig config;
    config.baseURL = defaultBaseURL(config.provider);
    config.model = u"google/gemini-3.8-flash"_s;

    EXPECT_FALSE(config.needsSetup(presence.isKnownMissing(config.provider)));
}

TEST_F(APIKeyPresenceStoreTest, ASavedKeyIsNotMissing)
{
    presence.markSaved(AIProvider::openRouter);

    EXPECT_EQ(presence.isKnownMissing(AIProvider::openRouter), false);
    EXPECT_EQ(defaults.boolean(u"aiSetup.apiKeySaved.openRouter"_s), true);
}

TEST_F(APIKeyPresenceStoreTest, ARemovedKeyIsKnownToBeMissing)
{
    presence.markSaved(AIProvider::openAI);

    presence.markRemoved(AIProvider::openAI);

    EXPECT_EQ(presence.isKnownMissing(AIProvider::openAI), true);
    EXPECT_EQ(defaults.boolean(u"aiSetup.apiKeySaved.openAI"_s), false);
}

TEST_F(APIKeyPresenceStoreTest, AKeySavedAgainIsNotMissing)
{
    presence.markRemoved(AIProvider::openAI);

    presence.markSaved(AIProvider::openAI);

    EXPECT_EQ(presence.isKnownMissing(AIProvider::openAI), false);
}

TEST_F(APIKeyPresenceStoreTest, ProvidersAreKeptApart)
{
    presence.markSaved(AIProvider::openRouter);
    presence.markRemoved(AIProvider::custom);

    EXPECT_EQ(presence.isKnownMissing(AIProvider::openRouter), false);
    EXPECT_EQ(presence.isKnownMissing(AIProvider::openAI), std::nullopt);
    EXPECT_EQ(presence.isKnownMissing(AIProvider::custom), true);
}

TEST_F(APIKeyPresenceStoreTest, HoldsNothingInMemory)
{
    const APIKeyPresenceStore nextLaunch(defaults);

    presence.markRemoved(AIProvider::openAI);

    EXPECT_EQ(nextLaunch.isKnownMissing(AIProvider::openAI), true);
}

TEST_F(APIKeyPresenceStoreTest, AStoredTextSaysNothing)
{
    ASSERT_TRUE(defaults.setText(u"aiSetup.apiKeySaved.openAI"_s, u"true"_s).has_value());

    EXPECT_EQ(presence.isKnownMissing(AIProvider::openAI), std::nullopt);
}

TEST(APIKeyPresenceStore, AFlagThatCannotBeSavedIsLoggedAndCountsUntilTheEnd)
{
    const QTemporaryDir folder;
    QFile inTheWay(folder.filePath(u"preferences"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    UserDefaults defaults(inTheWay.fileName());
    APIKeyPresenceStore presence(defaults);
    test::expectOneMessage(
        u"the preferences could not be saved, and are kept until they can be: "_s);

    presence.markSaved(AIProvider::openAI);

    EXPECT_EQ(presence.isKnownMissing(AIProvider::openAI), false);
}

} // namespace
} // namespace vantrel
