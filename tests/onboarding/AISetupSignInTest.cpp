#include "onboarding/AISetupViewModelFixture.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr std::int32_t lockedStatus = -25308;
const QString lockedSentence = u"Couldn't save the API key: Keychain error (status -25308)"_s;
const AIProviderConfig signedInConfig{AIProvider::openRouter, u"https://openrouter.ai/api/v1"_s,
                                      u"google/gemini-3.8-flash"_s};

FakeSignIn::Outcome failedSignIn()
{
    return failure(OpenRouterSignInError{OpenRouterSignInError::Case::denied, u"You said no"_s, 0});
}

TEST_F(AISetupViewModelTest, ASignInWaitsForTheBrowser)
{
    setup->startSignIn();
    runUntilIdle();

    EXPECT_EQ(setup->step(), Step::signingIn);
    EXPECT_TRUE(setup->isSigningIn());
    EXPECT_EQ(signIn.begunCount(), 1);
    EXPECT_EQ(activations, 0);
}

TEST_F(AISetupViewModelTest, ASecondSignInDoesNotBeginBesideTheFirst)
{
    setup->startSignIn();
    setup->startSignIn();
    runUntilIdle();

    EXPECT_EQ(signIn.begunCount(), 1);
}

TEST_F(AISetupViewModelTest, ASignInSavesItsKeyWithTheDefaultModel)
{
    rememberNotices();

    signInWithKey(u"sk-or-1"_s);
    EXPECT_EQ(activations, 1);
    EXPECT_FALSE(setup->isSigningIn());
    waitForSave();

    EXPECT_EQ(keychain->storedKey(AIProvider::openRouter), u"sk-or-1"_s);
    EXPECT_EQ(presence.isKnownMissing(AIProvider::openRouter), false);
    EXPECT_EQ(store.loadAIConfig(), signedInConfig);
    EXPECT_EQ(setup->step(), Step::done);
    EXPECT_EQ(setup->readyMessage(), u"Ready: using Gemini 3.8 Flash via OpenRouter"_s);
    EXPECT_TRUE(setup->hasCompletedSetup());
    EXPECT_EQ(setup->completedProvider(), AIProvider::openRouter);
    EXPECT_TRUE(setup->isOpenRouterSetUp());
    EXPECT_EQ(announcements, 0);
}

TEST_F(AISetupViewModelTest, TheFirstKeyOfASignInIsExplained)
{
    signInWithKey(u"sk-or-1"_s);
    EXPECT_TRUE(setup->isShowingKeychainNotice());
    EXPECT_EQ(setup->step(), Step::signingIn);
    EXPECT_EQ(activations, 1);
    EXPECT_EQ(keychainCalls(), QStringList());

    setup->confirmKeychainNotice();
    waitForSave();

    EXPECT_FALSE(setup->isShowingKeychainNotice());
    EXPECT_EQ(keychain->storedKey(AIProvider::openRouter), u"sk-or-1"_s);
    EXPECT_EQ(setup->step(), Step::done);
}

TEST_F(AISetupViewModelTest, AFailedSignInShowsItsSentenceBesideTheThreePaths)
{
    setup->startSignIn();
    runUntilIdle();

    signIn.finish(failedSignIn());
    runUntilIdle();

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_EQ(setup->errorMessage(),
              u"OpenRouter didn't finish sign-in (You said no). Try again."_s);
    EXPECT_FALSE(setup->isSigningIn());
    EXPECT_EQ(activations, 0);
    EXPECT_EQ(keychainCalls(), QStringList());
}

TEST_F(AISetupViewModelTest, AFailedSignInCanBeTriedAgain)
{
    setup->startSignIn();
    runUntilIdle();
    signIn.finish(failedSignIn());
    runUntilIdle();

    setup->startSignIn();
    runUntilIdle();

    EXPECT_EQ(setup->step(), Step::signingIn);
    EXPECT_EQ(setup->errorMessage(), QString());
    EXPECT_EQ(signIn.begunCount(), 2);
}

TEST_F(AISetupViewModelTest, ACancelledSignInShowsNothing)
{
    setup->startSignIn();
    runUntilIdle();

    setup->cancelSignIn();
    runUntilIdle();

    EXPECT_EQ(signIn.runningCount(), 0);
    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_EQ(setup->errorMessage(), QString());
    EXPECT_FALSE(setup->isSigningIn());
}

TEST_F(AISetupViewModelTest, AKeyThatComesAtTheMomentOfTheCancellationIsDropped)
{
    rememberNotices();
    setup->startSignIn();
    runUntilIdle();
    signIn.finish(u"sk-or-1"_s);

    setup->cancelSignIn();
    runUntilIdle();

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_EQ(activations, 0);
    EXPECT_EQ(keychainCalls(), QStringList());
}

TEST_F(AISetupViewModelTest, ASignInDoesNotLoseItsKeyToARefusingKeychain)
{
    rememberNotices();
    keychain->refuseNext(lockedStatus);
    signInWithKey(u"sk-or-1"_s);
    waitForSave();
    EXPECT_EQ(setup->step(), Step::signingIn);
    EXPECT_EQ(setup->errorMessage(), lockedSentence);
    EXPECT_TRUE(setup->canSaveKeyAgain());
    EXPECT_FALSE(setup->hasCompletedSetup());

    setup->saveKeyAgain();
    EXPECT_FALSE(setup->canSaveKeyAgain());
    EXPECT_EQ(setup->errorMessage(), QString());
    waitForSave();

    EXPECT_EQ(keychain->storedKey(AIProvider::openRouter), u"sk-or-1"_s);
    EXPECT_EQ(setup->step(), Step::done);
    EXPECT_EQ(signIn.begunCount(), 1);
}

TEST_F(AISetupViewModelTest, GivingUpAKeyThatWasRefusedForgetsIt)
{
    rememberNotices();
    keychain->refuseNext(lockedStatus);
    signInWithKey(u"sk-or-1"_s);
    waitForSave();

    setup->cancelSignIn();
    setup->saveKeyAgain();

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_EQ(setup->errorMessage(), QString());
    EXPECT_FALSE(setup->canSaveKeyAgain());
    EXPECT_EQ(keychainCalls(), QStringList{u"save sk-or-1 openRouter"_s});
}

TEST_F(AISetupViewModelTest, GoingBackFromTheExplanationDropsTheKey)
{
    signInWithKey(u"sk-or-1"_s);

    setup->cancelSignIn();
    setup->confirmKeychainNotice();

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_FALSE(setup->isShowingKeychainNotice());
    EXPECT_EQ(keychainCalls(), QStringList());
}

TEST_F(AISetupViewModelTest, WhoeverHearsTheFirstSignalOfASignInSeesItsWholeStep)
{
    QStringList seen;
    QObject::connect(setup.get(), &AISetupViewModel::stepChanged, setup.get(), [&] {
        seen.append(u"%1 %2"_s.arg(setup->isSigningIn()).arg(setup->errorMessage()));
    });
    setup->startSignIn();
    runUntilIdle();
    signIn.finish(failedSignIn());
    runUntilIdle();

    EXPECT_EQ(seen, QStringList({u"1 "_s, u"0 OpenRouter didn't finish sign-in (You said no). "
                                          "Try again."_s}));
}

} // namespace
} // namespace vantrel::test
