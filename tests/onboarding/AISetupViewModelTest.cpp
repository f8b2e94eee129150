#include "onboarding/AISetupViewModelFixture.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const LocalModelServerStatuses ollamaRuns{
    {LocalModelServer::ollama, LocalModelServerStatus::running({u"llama3"_s})},
    {LocalModelServer::lmStudio, LocalModelServerStatus::notRunning()}};

TEST_F(AISetupViewModelTest, BeginsWithTheThreePaths)
{
    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_EQ(setup->errorMessage(), QString());
    EXPECT_EQ(setup->readyMessage(), QString());
    EXPECT_FALSE(setup->isShowingKeychainNotice());
    EXPECT_FALSE(setup->hasCompletedSetup());
    EXPECT_EQ(setup->completedProvider(), std::nullopt);
    EXPECT_FALSE(setup->isOpenRouterSetUp());
    EXPECT_EQ(setup->pasteProvider(), AIProvider::openRouter);
    EXPECT_EQ(setup->apiKeyDraft(), QString());
    EXPECT_EQ(setup->pasteModel(), u"google/gemini-3.8-flash"_s);
    EXPECT_FALSE(setup->isPasteModelCustom());
    EXPECT_TRUE(setup->localServerStatuses().isEmpty());
    EXPECT_EQ(setup->selectedLocalServer(), std::nullopt);
    EXPECT_EQ(setup->selectedLocalModel(), std::nullopt);
    EXPECT_EQ(keychainCalls(), QStringList());
}

TEST_F(AISetupViewModelTest, APathBeginsOnTheFirstPageOnly)
{
    setup->choosePasteKey();

    setup->startSignIn();
    setup->chooseLocalModel();
    runUntilIdle();

    EXPECT_EQ(setup->step(), Step::pasteKey);
    EXPECT_EQ(signIn.begunCount(), 0);
    EXPECT_EQ(detector.begunCount(), 0);
}

TEST_F(AISetupViewModelTest, CommandsOfOtherPagesDoNothing)
{
    setup->savePastedKey();
    setup->useLocalModel();
    setup->checkLocalServers();
    setup->confirmKeychainNotice();
    setup->saveKeyAgain();
    setup->cancelSignIn();
    setup->back();
    runUntilIdle();

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_EQ(published, QStringList());
    EXPECT_EQ(detector.begunCount(), 0);
}

TEST_F(AISetupViewModelTest, GoingBackFromAFormClearsItsError)
{
    setup->choosePasteKey();
    setup->savePastedKey();
    ASSERT_NE(setup->errorMessage(), QString());

    setup->back();

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_EQ(setup->errorMessage(), QString());
}

TEST_F(AISetupViewModelTest, GoingBackKeepsWhatWasTyped)
{
    setup->choosePasteKey();
    setup->setApiKeyDraft(u"sk-1"_s);
    setup->selectCustomModel(u"mine"_s);

    setup->back();
    setup->choosePasteKey();

    EXPECT_EQ(setup->apiKeyDraft(), u"sk-1"_s);
    EXPECT_EQ(setup->pasteModel(), u"mine"_s);
}

TEST_F(AISetupViewModelTest, NothingLeadsBackFromTheEnd)
{
    setup->chooseLocalModel();
    detect(ollamaRuns);
    setup->useLocalModel();

    setup->back();

    EXPECT_EQ(setup->step(), Step::done);
}

TEST_F(AISetupViewModelTest, TheSheetAnnouncesTheChangeWhenItIsClosed)
{
    setup->chooseLocalModel();
    detect(ollamaRuns);
    setup->useLocalModel();
    EXPECT_EQ(announcements, 0);

    setup->close();
    EXPECT_EQ(announcements, 1);
    setup->close();

    EXPECT_EQ(announcements, 1);
}

TEST_F(AISetupViewModelTest, ClosingWithoutASetupAnnouncesNothing)
{
    setup->close();
    pasteKey(u"sk-1"_s);
    setup->close();

    EXPECT_EQ(announcements, 0);
    EXPECT_EQ(setup->apiKeyDraft(), QString());
    EXPECT_FALSE(setup->isShowingKeychainNotice());
}

TEST_F(AISetupViewModelTest, TheAnnouncementFindsTheNewConfiguration)
{
    AIProviderConfig announced;
    const auto observing = notificationCenter.observe(aiConfigurationDidChange,
                                                      [&] { announced = store.loadAIConfig(); });
    setup->chooseLocalModel();
    detect(ollamaRuns);
    setup->useLocalModel();

    setup->close();

    EXPECT_EQ(announced,
              (AIProviderConfig{AIProvider::custom, u"http://localhost:11434/v1"_s, u"llama3"_s}));
}

TEST_F(AISetupViewModelTest, ANewSheetBeginsAnew)
{
    rememberNotices();
    pasteKey(u"sk-1"_s);
    waitForSave();
    setup->close();

    makeSetup();

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_FALSE(setup->hasCompletedSetup());
    EXPECT_EQ(setup->apiKeyDraft(), QString());
}

TEST_F(AISetupViewModelTest, EqualWritesAreNotAnnounced)
{
    setup->setApiKeyDraft(QString());
    setup->setPasteModel(u"google/gemini-3.8-flash"_s);
    setup->selectPreset(u"google/gemini-3.8-flash"_s);
    setup->setPasteProvider(AIProvider::openRouter);
    setup->choosePasteProvider(0);

    EXPECT_EQ(published, QStringList());
}

// Leaving

TEST_F(AISetupViewModelTest, LeavingDuringTheSignInEndsIt)
{
    setup->startSignIn();
    runUntilIdle();
    ASSERT_EQ(signIn.runningCount(), 1);

    setup.reset();

    EXPECT_EQ(signIn.runningCount(), 0);
}

TEST_F(AISetupViewModelTest, LeavingDuringADetectionEndsIt)
{
    setup->chooseLocalModel();
    runUntilIdle();

    setup.reset();
    detector.finish(ollamaRuns);
    runUntilIdle();

    EXPECT_EQ(detector.begunCount(), 1);
}

TEST_F(AISetupViewModelTest, LeavingWhileTheKeychainSavesRecordsNothing)
{
    const AIProviderConfig before = store.loadAIConfig();
    hangWhileSaving(u"sk-1"_s);

    setup.reset();
    keychain->letGo();

    EXPECT_EQ(keychainCalls(), QStringList{u"save sk-1 openRouter"_s});
    EXPECT_EQ(store.loadAIConfig(), before);
    EXPECT_EQ(presence.isKnownMissing(AIProvider::openRouter), std::nullopt);
    EXPECT_EQ(announcements, 0);
}

TEST_F(AISetupViewModelTest, ClosingWhileTheKeychainSavesDoesTheSame)
{
    const AIProviderConfig before = store.loadAIConfig();
    hangWhileSaving(u"sk-1"_s);

    setup->close();
    keychain->letGo();

    EXPECT_EQ(keychainCalls(), QStringList{u"save sk-1 openRouter"_s});
    EXPECT_EQ(store.loadAIConfig(), before);
    EXPECT_FALSE(setup->isSavingKey());
    EXPECT_EQ(announcements, 0);
}

TEST_F(AISetupViewModelTest, ClosingDuringTheSignInEndsIt)
{
    setup->startSignIn();
    runUntilIdle();

    setup->close();

    EXPECT_EQ(signIn.runningCount(), 0);
    EXPECT_FALSE(setup->isSigningIn());
}

TEST_F(AISetupViewModelTest, ClosingBeforeTheJobRanBeginsNothing)
{
    setup->startSignIn();

    setup->close();
    runUntilIdle();

    EXPECT_EQ(signIn.begunCount(), 0);
}

} // namespace
} // namespace vantrel::test
