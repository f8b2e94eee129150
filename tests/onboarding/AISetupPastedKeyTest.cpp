#include "onboarding/AISetupViewModelFixture.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr std::int32_t lockedStatus = -25308;
const QString openAIURL = u"https://api.openai.com/v1"_s;
const QString openRouterURL = u"https://openrouter.ai/api/v1"_s;

TEST_F(AISetupViewModelTest, OffersTheProvidersWhoseKeysCanBePasted)
{
    EXPECT_EQ(setup->pasteProviderNames(), QList<QString>({u"OpenRouter"_s, u"OpenAI"_s}));
    EXPECT_EQ(setup->pasteProviderIndex(), 0);
    EXPECT_EQ(setup->pasteProviderName(), u"OpenRouter"_s);
}

TEST_F(AISetupViewModelTest, AnotherProviderComesWithItsDefaultModel)
{
    setup->choosePasteKey();
    setup->selectCustomModel(u"mine"_s);
    setup->savePastedKey();
    published.clear();

    setup->choosePasteProvider(1);

    EXPECT_EQ(setup->pasteProvider(), AIProvider::openAI);
    EXPECT_EQ(setup->pasteModel(), u"gpt-6-luna"_s);
    EXPECT_FALSE(setup->isPasteModelCustom());
    EXPECT_EQ(setup->errorMessage(), QString());
    EXPECT_EQ(published, QStringList({u"pasteProvider"_s, u"isPasteModelCustom"_s, u"pasteModel"_s,
                                      u"errorMessage"_s}));
}

TEST_F(AISetupViewModelTest, AProviderWithoutPresetsHasAFreeModel)
{
    setup->setPasteProvider(AIProvider::custom);

    EXPECT_EQ(setup->pasteModel(), QString());
    EXPECT_TRUE(setup->isPasteModelCustom());
    EXPECT_EQ(setup->pasteProviderIndex(), -1);
}

TEST_F(AISetupViewModelTest, APlaceWithoutAProviderIsIgnored)
{
    setup->choosePasteProvider(-1);
    setup->choosePasteProvider(2);

    EXPECT_EQ(published, QStringList());
}

TEST_F(AISetupViewModelTest, AModelIsAPresetOrTyped)
{
    setup->selectCustomModel(u"min"_s);
    setup->setPasteModel(u"mine"_s);
    EXPECT_EQ(setup->pasteModel(), u"mine"_s);
    EXPECT_TRUE(setup->isPasteModelCustom());

    setup->selectPreset(u"openai/gpt-6-luna"_s);

    EXPECT_EQ(setup->pasteModel(), u"openai/gpt-6-luna"_s);
    EXPECT_FALSE(setup->isPasteModelCustom());
}

class MissingKeyTest : public AISetupViewModelTest,
                       public testing::WithParamInterface<std::pair<AIProvider, QString>>
{};

TEST_P(MissingKeyTest, IsAskedForByTheNameOfItsProvider)
{
    setup->choosePasteKey();
    setup->setPasteProvider(GetParam().first);
    setup->setPasteModel(QString());
    setup->setApiKeyDraft(u" \n\t"_s);

    setup->savePastedKey();

    EXPECT_EQ(setup->errorMessage(), GetParam().second);
    EXPECT_EQ(setup->step(), Step::pasteKey);
    EXPECT_FALSE(setup->isShowingKeychainNotice());
}

INSTANTIATE_TEST_SUITE_P(
    Setup, MissingKeyTest,
    testing::Values(std::pair(AIProvider::openRouter, u"Paste your OpenRouter API key."_s),
                    std::pair(AIProvider::openAI, u"Paste your OpenAI API key."_s),
                    std::pair(AIProvider::custom, u"Paste your Custom API key."_s)));

TEST_F(AISetupViewModelTest, AMissingModelIsAskedFor)
{
    setup->choosePasteKey();
    setup->setApiKeyDraft(u"sk-1"_s);
    setup->selectCustomModel(u" \n"_s);

    setup->savePastedKey();

    EXPECT_EQ(setup->errorMessage(), u"Enter a model ID."_s);
    EXPECT_EQ(setup->apiKeyDraft(), u"sk-1"_s);
    EXPECT_EQ(keychainCalls(), QStringList());
}

TEST_F(AISetupViewModelTest, APastedKeyIsSavedTrimmedWithItsConfiguration)
{
    rememberNotices();
    setup->choosePasteKey();
    setup->setPasteProvider(AIProvider::openAI);
    setup->selectCustomModel(u" gpt-6-sol\n"_s);
    setup->setApiKeyDraft(u"\n sk-1 \r\n"_s);

    setup->savePastedKey();
    EXPECT_TRUE(setup->isSavingKey());
    EXPECT_EQ(setup->step(), Step::pasteKey);
    waitForSave();

    EXPECT_EQ(keychain->storedKey(AIProvider::openAI), u"sk-1"_s);
    EXPECT_EQ(presence.isKnownMissing(AIProvider::openAI), false);
    EXPECT_EQ(store.loadAIConfig(),
              (AIProviderConfig{AIProvider::openAI, openAIURL, u"gpt-6-sol"_s}));
    EXPECT_EQ(setup->step(), Step::done);
    EXPECT_EQ(setup->readyMessage(), u"Ready: using GPT-6 Sol via OpenAI"_s);
    EXPECT_EQ(setup->completedProvider(), AIProvider::openAI);
    EXPECT_FALSE(setup->isOpenRouterSetUp());
    EXPECT_EQ(setup->apiKeyDraft(), QString());
    EXPECT_EQ(activations, 0);
}

TEST_F(AISetupViewModelTest, AModelOfNoPresetIsNamedByItsIdentifier)
{
    rememberNotices();
    setup->choosePasteKey();
    setup->selectCustomModel(u" gpt-6-luna "_s); // A preset of another provider.
    setup->setApiKeyDraft(u"sk-1"_s);

    setup->savePastedKey();
    waitForSave();

    EXPECT_EQ(setup->readyMessage(), u"Ready: using gpt-6-luna via OpenRouter"_s);
    EXPECT_EQ(store.loadAIConfig(),
              (AIProviderConfig{AIProvider::openRouter, openRouterURL, u"gpt-6-luna"_s}));
}

TEST_F(AISetupViewModelTest, ACustomProviderHasNoAddress)
{
    rememberNotices();
    setup->choosePasteKey();
    setup->setPasteProvider(AIProvider::custom);
    setup->setPasteModel(u"m"_s);
    setup->setApiKeyDraft(u"sk-1"_s);

    setup->savePastedKey();
    waitForSave();

    EXPECT_EQ(store.loadAIConfig(), (AIProviderConfig{AIProvider::custom, QString(), u"m"_s}));
    EXPECT_EQ(setup->readyMessage(), u"Ready: using m via Custom"_s);
}

TEST_F(AISetupViewModelTest, AKeyWithLineBreaksInsideIsSavedAsItIs)
{
    rememberNotices();

    pasteKey(u" sk-1\r\nX-Header: 1 "_s);
    waitForSave();

    EXPECT_EQ(keychain->storedKey(AIProvider::openRouter), u"sk-1\r\nX-Header: 1"_s);
    EXPECT_FALSE(setup->readyMessage().contains(u"sk-1"_s));
}

TEST_F(AISetupViewModelTest, AModelOfTenThousandCharactersIsSavedWhole)
{
    rememberNotices();
    const QString model(10'000, u'm');
    setup->choosePasteKey();
    setup->selectCustomModel(model);
    setup->setApiKeyDraft(u"sk-1"_s);

    setup->savePastedKey();
    waitForSave();

    EXPECT_EQ(store.loadAIConfig().model, model);
    EXPECT_EQ(setup->readyMessage(), u"Ready: using "_s + model + u" via OpenRouter"_s);
}

// The explanation of the keychain

TEST_F(AISetupViewModelTest, TheFirstPastedKeyIsExplained)
{
    pasteKey(u"sk-1"_s);

    EXPECT_TRUE(setup->isShowingKeychainNotice());
    EXPECT_FALSE(setup->isSavingKey());
    EXPECT_EQ(setup->step(), Step::pasteKey);
    EXPECT_EQ(keychainCalls(), QStringList());
}

TEST_F(AISetupViewModelTest, ConfirmingTheExplanationSavesAndReleasesTheSharedNotice)
{
    bool isReleased = false;
    const auto waiting = [](KeychainAccessNotice *shared, bool *released) -> Task<> {
        co_await shared->showIfNeededAndWait();
        *released = true;
    };
    const Job job(waiting(&notice, &isReleased));
    runUntilIdle();
    ASSERT_TRUE(notice.isShowingNotice());
    pasteKey(u"sk-1"_s);

    setup->confirmKeychainNotice();
    EXPECT_FALSE(setup->isShowingKeychainNotice());
    EXPECT_FALSE(notice.isShowingNotice());
    waitForSave();

    EXPECT_TRUE(isReleased);
    EXPECT_EQ(defaults.boolean(u"settings.hasShownKeychainNotice"_s), true);
    EXPECT_EQ(defaults.boolean(u"keychainAccessNotice.hasAcknowledged"_s), true);
    EXPECT_EQ(keychain->storedKey(AIProvider::openRouter), u"sk-1"_s);
    EXPECT_EQ(setup->step(), Step::done);
}

TEST_F(AISetupViewModelTest, EitherMissingRecordBringsTheExplanation)
{
    ASSERT_TRUE(defaults.setBoolean(u"settings.hasShownKeychainNotice"_s, true));
    pasteKey(u"sk-1"_s);
    EXPECT_TRUE(setup->isShowingKeychainNotice());

    makeSetup();
    notice.acknowledge();
    ASSERT_TRUE(defaults.setBoolean(u"settings.hasShownKeychainNotice"_s, false));
    pasteKey(u"sk-1"_s);

    EXPECT_TRUE(setup->isShowingKeychainNotice());
}

TEST_F(AISetupViewModelTest, ASecondKeyIsSavedWithoutTheExplanation)
{
    pasteKey(u"sk-1"_s);
    setup->confirmKeychainNotice();
    waitForSave();
    setup->close();
    makeSetup();

    pasteKey(u"sk-2"_s);

    EXPECT_FALSE(setup->isShowingKeychainNotice());
    waitForSave();
    EXPECT_EQ(keychain->storedKey(AIProvider::openRouter), u"sk-2"_s);
    EXPECT_EQ(keychainCalls(), QStringList({u"save sk-1 openRouter"_s, u"save sk-2 openRouter"_s}));
}

TEST_F(AISetupViewModelTest, TheKeyIsTheOneThatWasThereWhenItWasExplained)
{
    pasteKey(u"sk-1"_s);
    setup->setApiKeyDraft(u"sk-2"_s);
    setup->savePastedKey();

    setup->confirmKeychainNotice();
    waitForSave();

    EXPECT_EQ(keychainCalls(), QStringList{u"save sk-1 openRouter"_s});
}

TEST_F(AISetupViewModelTest, ConfirmingTwiceSavesOnce)
{
    pasteKey(u"sk-1"_s);

    setup->confirmKeychainNotice();
    setup->confirmKeychainNotice();
    waitForSave();

    EXPECT_EQ(keychainCalls(), QStringList{u"save sk-1 openRouter"_s});
}

// The answer of the keychain

TEST_F(AISetupViewModelTest, ARefusingKeychainLosesNothing)
{
    rememberNotices();
    const AIProviderConfig before = store.loadAIConfig();
    keychain->refuseNext(lockedStatus);
    setup->choosePasteKey();
    setup->selectCustomModel(u"mine"_s);
    setup->setApiKeyDraft(u" sk-1 "_s);

    setup->savePastedKey();
    waitForSave();

    EXPECT_EQ(setup->errorMessage(),
              u"Couldn't save the API key: Keychain error (status -25308)"_s);
    EXPECT_EQ(setup->step(), Step::pasteKey);
    EXPECT_EQ(setup->apiKeyDraft(), u" sk-1 "_s);
    EXPECT_EQ(setup->pasteModel(), u"mine"_s);
    EXPECT_FALSE(setup->canSaveKeyAgain());
    EXPECT_FALSE(setup->hasCompletedSetup());
    EXPECT_EQ(presence.isKnownMissing(AIProvider::openRouter), std::nullopt);
    EXPECT_EQ(store.loadAIConfig(), before);
    setup->close();
    EXPECT_EQ(announcements, 0);
}

TEST_F(AISetupViewModelTest, ARefusedKeyCanBeSavedAgain)
{
    rememberNotices();
    keychain->refuseNext(lockedStatus);
    pasteKey(u"sk-1"_s);
    waitForSave();

    setup->savePastedKey();
    EXPECT_EQ(setup->errorMessage(), QString());
    waitForSave();

    EXPECT_EQ(setup->step(), Step::done);
}

TEST_F(AISetupViewModelTest, AKeychainThatDoesNotAnswerIsReportedAsUnavailable)
{
    hangWhileSaving(u"sk-1"_s);

    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    EXPECT_EQ(setup->errorMessage(),
              u"Couldn't save the API key: Keychain error (status -25291)"_s);
    EXPECT_FALSE(setup->isSavingKey());
}

TEST_F(AISetupViewModelTest, SavingTwiceAsksTheKeychainOnce)
{
    hangWhileSaving(u"sk-1"_s);

    setup->savePastedKey();
    keychain->letGo();
    waitForSave();

    EXPECT_EQ(keychainCalls(), QStringList{u"save sk-1 openRouter"_s});
}

TEST_F(AISetupViewModelTest, GoingBackWhileTheKeychainSavesDropsItsAnswer)
{
    hangWhileSaving(u"sk-1"_s);

    setup->back();
    keychain->letGo();

    EXPECT_EQ(keychainCalls(), QStringList{u"save sk-1 openRouter"_s});
    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_FALSE(setup->isSavingKey());
    EXPECT_FALSE(setup->hasCompletedSetup());
}

TEST_F(AISetupViewModelTest, AnotherProviderChosenMeanwhileDoesNotTakeTheKey)
{
    hangWhileSaving(u"sk-1"_s);

    setup->setPasteProvider(AIProvider::openAI);
    keychain->letGo();
    waitForSave();

    EXPECT_EQ(setup->completedProvider(), AIProvider::openRouter);
    EXPECT_EQ(store.loadAIConfig().provider, AIProvider::openRouter);
    EXPECT_EQ(setup->readyMessage(), u"Ready: using Gemini 3.8 Flash via OpenRouter"_s);
}

} // namespace
} // namespace vantrel::test
