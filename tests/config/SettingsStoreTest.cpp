#include "ai/config/SettingsStore.h"

#include "ai/config/AIModelPreset.h"
#include "platform/UserDefaults.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

AIProviderConfig config(AIProvider provider, const QString &baseURL, const QString &model)
{
    AIProviderConfig config;
    config.provider = provider;
    config.baseURL = baseURL;
    config.model = model;
    return config;
}

class SettingsStoreTest : public testing::Test
{
protected:
    void store(const QString &key, const QString &value)
    {
        ASSERT_TRUE(defaults.setText(key, value).has_value());
    }

    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    SettingsStore settings{defaults};
};

TEST_F(SettingsStoreTest, AFreshInstallationLoadsOpenRouterWithTheDefaultPreset)
{
    const AIProviderConfig loaded = settings.loadAIConfig();

    EXPECT_EQ(loaded, config(AIProvider::openRouter, u"https://openrouter.ai/api/v1"_s, QString()));
    EXPECT_EQ(presetID(loaded.model, loaded.provider), u"google/gemini-3.8-flash"_s);
}

TEST_F(SettingsStoreTest, AProviderInAnotherCaseFallsBackToTheDefaultsAltogether)
{
    store(u"aiProvider"_s, u"OpenRouter"_s);
    store(u"aiBaseURL"_s, u"https://example.com/v1"_s);
    store(u"aiModel"_s, u"some-model"_s);

    EXPECT_EQ(settings.loadAIConfig(),
              config(AIProvider::openRouter, u"https://openrouter.ai/api/v1"_s, QString()));
}

TEST_F(SettingsStoreTest, AMissingProviderFallsBackToTheDefaultsAltogether)
{
    store(u"aiBaseURL"_s, u"https://example.com/v1"_s);
    store(u"aiModel"_s, u"some-model"_s);

    EXPECT_EQ(settings.loadAIConfig(),
              config(AIProvider::openRouter, u"https://openrouter.ai/api/v1"_s, QString()));
}

TEST_F(SettingsStoreTest, ACustomProviderWithoutABaseURLLoadsAnEmptyOne)
{
    store(u"aiProvider"_s, u"custom"_s);

    EXPECT_EQ(settings.loadAIConfig(), config(AIProvider::custom, QString(), QString()));
}

TEST_F(SettingsStoreTest, AMissingBaseURLIsTheProvidersDefault)
{
    store(u"aiProvider"_s, u"openAI"_s);
    store(u"aiModel"_s, u"gpt-6-sol"_s);

    EXPECT_EQ(settings.loadAIConfig(),
              config(AIProvider::openAI, u"https://api.openai.com/v1"_s, u"gpt-6-sol"_s));
}

TEST_F(SettingsStoreTest, AStoredEmptyBaseURLStaysEmpty)
{
    store(u"aiProvider"_s, u"openAI"_s);
    store(u"aiBaseURL"_s, QString());

    EXPECT_EQ(settings.loadAIConfig(), config(AIProvider::openAI, QString(), QString()));
}

TEST_F(SettingsStoreTest, AProviderThatIsNoTextFallsBackToTheDefaults)
{
    ASSERT_TRUE(defaults.setBoolean(u"aiProvider"_s, true).has_value());
    store(u"aiModel"_s, u"some-model"_s);

    EXPECT_EQ(settings.loadAIConfig(),
              config(AIProvider::openRouter, u"https://openrouter.ai/api/v1"_s, QString()));
}

TEST_F(SettingsStoreTest, SavesTheConfigurationUntrimmedUnderItsKeys)
{
    settings.saveAIConfig(config(AIProvider::custom, u" http://localhost:1234/v1\n"_s, u" m "_s));

    EXPECT_EQ(defaults.text(u"aiProvider"_s), u"custom"_s);
    EXPECT_EQ(defaults.text(u"aiBaseURL"_s), u" http://localhost:1234/v1\n"_s);
    EXPECT_EQ(defaults.text(u"aiModel"_s), u" m "_s);
}

TEST_F(SettingsStoreTest, LoadsWhatWasSaved)
{
    const AIProviderConfig saved = config(AIProvider::openAI, u" https://é.example "_s, u"模型"_s);

    settings.saveAIConfig(saved);

    EXPECT_EQ(settings.loadAIConfig(), saved);
}

TEST_F(SettingsStoreTest, HoldsNoConfigurationInMemory)
{
    SettingsStore other(defaults);
    settings.saveAIConfig(config(AIProvider::openAI, u"https://a.example"_s, u"a"_s));
    (void)settings.loadAIConfig();

    other.saveAIConfig(config(AIProvider::custom, u"https://b.example"_s, u"b"_s));

    EXPECT_EQ(settings.loadAIConfig(), config(AIProvider::custom, u"https://b.example"_s, u"b"_s));
}

TEST_F(SettingsStoreTest, TheAppearanceIsTheSystemsUnlessOneIsStored)
{
    EXPECT_EQ(settings.loadAppearance(), AppAppearance::system);
}

TEST_F(SettingsStoreTest, AnUnknownAppearanceIsTheSystems)
{
    store(u"appAppearance"_s, u"Light"_s);

    EXPECT_EQ(settings.loadAppearance(), AppAppearance::system);
}

TEST_F(SettingsStoreTest, EveryAppearanceIsStoredAndLoaded)
{
    settings.saveAppearance(AppAppearance::dark);
    EXPECT_EQ(defaults.text(u"appAppearance"_s), u"dark"_s);
    EXPECT_EQ(settings.loadAppearance(), AppAppearance::dark);

    settings.saveAppearance(AppAppearance::light);
    EXPECT_EQ(defaults.text(u"appAppearance"_s), u"light"_s);
    EXPECT_EQ(settings.loadAppearance(), AppAppearance::light);

    settings.saveAppearance(AppAppearance::system);
    EXPECT_EQ(defaults.text(u"appAppearance"_s), u"system"_s);
    EXPECT_EQ(settings.loadAppearance(), AppAppearance::system);
}

TEST_F(SettingsStoreTest, TheKeysAreFixedAtComposition)
{
    SettingsKeys keys;
    keys.providerKey = u"p"_s;
    keys.baseURLKey = u"b"_s;
    keys.modelKey = u"m"_s;
    keys.appearanceKey = u"a"_s;
    SettingsStore own(defaults, keys);

    own.saveAIConfig(config(AIProvider::openAI, u"url"_s, u"model"_s));
    own.saveAppearance(AppAppearance::dark);

    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files, QDir::Name),
              QStringList({u"a"_s, u"b"_s, u"m"_s, u"p"_s}));
    EXPECT_EQ(own.loadAIConfig(), config(AIProvider::openAI, u"url"_s, u"model"_s));
    EXPECT_EQ(own.loadAppearance(), AppAppearance::dark);
}

TEST(SettingsStore, PreferencesThatCannotBeSavedAreLoggedOnceAndCountUntilTheEnd)
{
    const QTemporaryDir folder;
    QFile inTheWay(folder.filePath(u"preferences"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    UserDefaults defaults(inTheWay.fileName());
    SettingsStore settings(defaults);
    test::expectOneMessage(
        u"the preferences could not be saved, and are kept until they can be: "_s);

    settings.saveAppearance(AppAppearance::dark);
    settings.saveAIConfig(config(AIProvider::openAI, u"url"_s, u"model"_s));

    EXPECT_EQ(settings.loadAppearance(), AppAppearance::dark);
    EXPECT_EQ(settings.loadAIConfig(), config(AIProvider::openAI, u"url"_s, u"model"_s));
}

} // namespace
} // namespace vantrel
