#include "onboarding/AISetupViewModelFixture.h"
#include "onboarding/VendorPages.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const LocalModelServerStatus notRunning = LocalModelServerStatus::notRunning();

LocalModelServerStatus running(const QStringList &models)
{
    return LocalModelServerStatus::running(models);
}

LocalModelServerStatuses statuses(const LocalModelServerStatus &ollama,
                                  const LocalModelServerStatus &lmStudio)
{
    return {{LocalModelServer::ollama, ollama}, {LocalModelServer::lmStudio, lmStudio}};
}

const LocalModelServerStatuses bothRun =
    statuses(running({u"llama3"_s, u"qwen"_s}), running({u"gemma"_s}));

TEST_F(AISetupViewModelTest, ThePageOfLocalModelsLooksForServersAtOnce)
{
    setup->chooseLocalModel();
    runUntilIdle();

    EXPECT_EQ(setup->step(), Step::localModel);
    EXPECT_TRUE(setup->isCheckingLocalServers());
    EXPECT_EQ(detector.begunCount(), 1);
    EXPECT_EQ(setup->localServerNames(), QList<QString>({u"Ollama"_s, u"LM Studio"_s}));
    EXPECT_EQ(setup->localServerStatusTexts(),
              QList<QString>({u"Not checked"_s, u"Not checked"_s}));
    EXPECT_EQ(setup->localServersRunning(), QList<bool>({false, false}));
}

TEST_F(AISetupViewModelTest, ADetectionShowsEveryServerAndSelectsTheFirstModel)
{
    setup->chooseLocalModel();

    detect(statuses(running({u"llama3"_s, u"qwen"_s}), notRunning));

    EXPECT_FALSE(setup->isCheckingLocalServers());
    EXPECT_EQ(setup->localServerStatusTexts(),
              QList<QString>({u"Running \u00B7 2 models"_s, u"Not running"_s}));
    EXPECT_EQ(setup->localServersRunning(), QList<bool>({true, false}));
    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::ollama);
    EXPECT_EQ(setup->selectedLocalServerIndex(), 0);
    EXPECT_EQ(setup->localModels(), QList<QString>({u"llama3"_s, u"qwen"_s}));
    EXPECT_EQ(setup->selectedLocalModel(), u"llama3"_s);
    EXPECT_EQ(setup->selectedLocalModelIndex(), 0);
    EXPECT_FALSE(setup->isNoLocalModelFound());
}

TEST_F(AISetupViewModelTest, ADetectionSelectsTheFirstServerThatHasModels)
{
    setup->chooseLocalModel();

    detect(statuses(running({}), running({u"gemma"_s})));

    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::lmStudio);
    EXPECT_EQ(setup->selectedLocalModel(), u"gemma"_s);
}

TEST_F(AISetupViewModelTest, ADetectionThatFindsNoModelSelectsNothing)
{
    setup->chooseLocalModel();
    EXPECT_FALSE(setup->isNoLocalModelFound());

    detect(statuses(running({}), notRunning));

    EXPECT_EQ(setup->selectedLocalServer(), std::nullopt);
    EXPECT_EQ(setup->selectedLocalServerIndex(), -1);
    EXPECT_EQ(setup->selectedLocalModel(), std::nullopt);
    EXPECT_EQ(setup->selectedLocalModelIndex(), -1);
    EXPECT_TRUE(setup->isNoLocalModelFound());
    EXPECT_EQ(setup->localServerStatusTexts(),
              QList<QString>({u"Running \u00B7 no models installed"_s, u"Not running"_s}));
}

TEST_F(AISetupViewModelTest, CheckingAgainKeepsAValidSelection)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->chooseLocalModelAt(1);

    setup->checkLocalServers();
    EXPECT_TRUE(setup->isCheckingLocalServers());
    EXPECT_EQ(setup->selectedLocalModel(), u"qwen"_s);
    detect(statuses(running({u"new"_s, u"llama3"_s, u"qwen"_s}), running({u"gemma"_s})));

    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::ollama);
    EXPECT_EQ(setup->selectedLocalModel(), u"qwen"_s);
    EXPECT_EQ(setup->selectedLocalModelIndex(), 2);
}

TEST_F(AISetupViewModelTest, CheckingAgainKeepsTheServerOfAModelThatWent)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->selectLocalServer(LocalModelServer::lmStudio);

    setup->checkLocalServers();
    detect(statuses(running({u"llama3"_s}), running({u"phi"_s, u"mistral"_s})));

    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::lmStudio);
    EXPECT_EQ(setup->selectedLocalModel(), u"phi"_s);
}

TEST_F(AISetupViewModelTest, CheckingAgainReplacesASelectionThatWent)
{
    setup->chooseLocalModel();
    detect(bothRun);

    setup->checkLocalServers();
    detect(statuses(notRunning, running({u"gemma"_s})));
    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::lmStudio);
    EXPECT_EQ(setup->selectedLocalModel(), u"gemma"_s);
    setup->checkLocalServers();
    detect(statuses(notRunning, notRunning));

    EXPECT_EQ(setup->selectedLocalServer(), std::nullopt);
    EXPECT_EQ(setup->selectedLocalModel(), std::nullopt);
    EXPECT_TRUE(setup->isNoLocalModelFound());
}

TEST_F(AISetupViewModelTest, CheckingAgainWhileOneRunsBeginsNoOther)
{
    setup->chooseLocalModel();
    runUntilIdle();

    setup->checkLocalServers();
    runUntilIdle();

    EXPECT_EQ(detector.begunCount(), 1);
}

TEST_F(AISetupViewModelTest, ADetectionThatChangesNothingAnnouncesItsEndAlone)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->checkLocalServers();
    published.clear();

    detect(bothRun);

    EXPECT_EQ(published, QStringList{u"isCheckingLocalServers"_s});
}

TEST_F(AISetupViewModelTest, AnotherServerComesWithItsFirstModel)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->chooseLocalModelAt(1);

    setup->chooseLocalServer(1);
    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::lmStudio);
    EXPECT_EQ(setup->selectedLocalModel(), u"gemma"_s);
    EXPECT_EQ(setup->localModels(), QList<QString>{u"gemma"_s});
    setup->chooseLocalServer(0);

    EXPECT_EQ(setup->selectedLocalModel(), u"llama3"_s);
}

TEST_F(AISetupViewModelTest, TheSelectedServerAgainKeepsItsModel)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->chooseLocalModelAt(1);

    setup->selectLocalServer(LocalModelServer::ollama);

    EXPECT_EQ(setup->selectedLocalModel(), u"qwen"_s);
}

TEST_F(AISetupViewModelTest, AServerThatDoesNotRunCannotBeSelected)
{
    setup->chooseLocalModel();
    setup->selectLocalServer(LocalModelServer::ollama);
    EXPECT_EQ(setup->selectedLocalServer(), std::nullopt);
    detect(statuses(running({u"llama3"_s}), notRunning));

    setup->selectLocalServer(LocalModelServer::lmStudio);

    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::ollama);
}

TEST_F(AISetupViewModelTest, PlacesWithoutAServerOrModelAreIgnored)
{
    setup->chooseLocalModel();
    detect(bothRun);
    published.clear();

    setup->chooseLocalServer(-1);
    setup->chooseLocalServer(2);
    setup->chooseLocalModelAt(-1);
    setup->chooseLocalModelAt(2);
    setup->openDownloadPage(-1);
    setup->openDownloadPage(2);

    EXPECT_EQ(published, QStringList());
    EXPECT_EQ(openedPages, QList<QUrl>());
}

TEST_F(AISetupViewModelTest, TheVendorsPagesAreOpenedInTheBrowser)
{
    setup->openDownloadPage(1);
    setup->openKeyPage();
    setup->setPasteProvider(AIProvider::openAI);
    setup->openKeyPage();
    setup->openCreditsPage();

    EXPECT_EQ(openedPages, (QList<QUrl>{VendorPages::download(LocalModelServer::lmStudio),
                                        VendorPages::keys(AIProvider::openRouter),
                                        VendorPages::keys(AIProvider::openAI),
                                        VendorPages::openRouterCredits()}));
}

TEST_F(AISetupViewModelTest, APageThatDoesNotOpenIsNamed)
{
    isBrowserThere = false;
    setup->choosePasteKey();
    setup->setApiKeyDraft(u"sk-1"_s);

    setup->openKeyPage();

    EXPECT_EQ(setup->errorMessage(), u"Couldn't open your browser. The page is "_s +
                                         VendorPages::keys(AIProvider::openRouter).toString());
    EXPECT_EQ(setup->step(), Step::pasteKey);
    EXPECT_EQ(setup->apiKeyDraft(), u"sk-1"_s);
}

TEST_F(AISetupViewModelTest, ServersAreToldApartByWhatIsKnownOfThem)
{
    EXPECT_EQ(setup->localServersUsable(), (QList<bool>{false, false}));
    EXPECT_EQ(setup->localServersMissing(), (QList<bool>{false, false}));
    setup->chooseLocalModel();

    detect(statuses(running({}), notRunning));

    EXPECT_EQ(setup->localServersRunning(), (QList<bool>{true, false}));
    EXPECT_EQ(setup->localServersUsable(), (QList<bool>{false, false}));
    EXPECT_EQ(setup->localServersMissing(), (QList<bool>{false, true}));
}

TEST_F(AISetupViewModelTest, StepsGoToTheNextServerWithModels)
{
    setup->chooseLocalModel();
    detect(bothRun);

    setup->stepLocalServer(1);
    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::lmStudio);
    EXPECT_EQ(setup->selectedLocalModelName(), *setup->selectedLocalModel());
    setup->stepLocalServer(1);
    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::lmStudio);
    setup->stepLocalServer(-1);
    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::ollama);

    setup->checkLocalServers();
    detect(statuses(running({u"llama3"_s}), running({})));
    setup->stepLocalServer(1);
    EXPECT_EQ(setup->selectedLocalServer(), LocalModelServer::ollama);
}

TEST_F(AISetupViewModelTest, UsingNoModelIsRefused)
{
    setup->chooseLocalModel();
    setup->useLocalModel();
    EXPECT_EQ(setup->errorMessage(), u"Choose a model first."_s);
    detect(statuses(running({}), notRunning));
    setup->selectLocalServer(LocalModelServer::ollama);
    EXPECT_EQ(setup->errorMessage(), QString());

    setup->useLocalModel();

    EXPECT_EQ(setup->errorMessage(), u"Choose a model first."_s);
    EXPECT_EQ(setup->step(), Step::localModel);
    EXPECT_FALSE(setup->hasCompletedSetup());
}

TEST_F(AISetupViewModelTest, CheckingAgainClearsTheError)
{
    setup->chooseLocalModel();
    detect(statuses(notRunning, notRunning));
    setup->useLocalModel();

    setup->checkLocalServers();

    EXPECT_EQ(setup->errorMessage(), QString());
}

TEST_F(AISetupViewModelTest, ALocalModelIsUsedAtOnceWithoutTheKeychain)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->chooseLocalModelAt(1);

    setup->useLocalModel();

    EXPECT_EQ(store.loadAIConfig(),
              (AIProviderConfig{AIProvider::custom, u"http://localhost:11434/v1"_s, u"qwen"_s}));
    EXPECT_EQ(setup->step(), Step::done);
    EXPECT_EQ(setup->readyMessage(), u"Ready: using qwen via Ollama"_s);
    EXPECT_EQ(setup->completedProvider(), AIProvider::custom);
    EXPECT_FALSE(setup->isOpenRouterSetUp());
    EXPECT_FALSE(setup->isShowingKeychainNotice());
    EXPECT_EQ(keychainCalls(), QStringList());
    EXPECT_EQ(presence.isKnownMissing(AIProvider::custom), std::nullopt);
    EXPECT_EQ(announcements, 0);
}

TEST_F(AISetupViewModelTest, TheOtherServerHasItsOwnAddressAndName)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->chooseLocalServer(1);

    setup->useLocalModel();

    EXPECT_EQ(store.loadAIConfig(),
              (AIProviderConfig{AIProvider::custom, u"http://localhost:1234/v1"_s, u"gemma"_s}));
    EXPECT_EQ(setup->readyMessage(), u"Ready: using gemma via LM Studio"_s);
}

TEST_F(AISetupViewModelTest, UsingAModelDuringACheckEndsTheCheck)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->checkLocalServers();
    runUntilIdle();

    setup->useLocalModel();
    detect(statuses(notRunning, notRunning));

    EXPECT_EQ(setup->step(), Step::done);
    EXPECT_FALSE(setup->isCheckingLocalServers());
    EXPECT_EQ(setup->localServerStatuses(), bothRun);
}

TEST_F(AISetupViewModelTest, GoingBackDuringADetectionDropsItsResult)
{
    setup->chooseLocalModel();
    runUntilIdle();

    setup->back();
    EXPECT_FALSE(setup->isCheckingLocalServers());
    detect(bothRun);

    EXPECT_EQ(setup->step(), Step::choose);
    EXPECT_TRUE(setup->localServerStatuses().isEmpty());
}

TEST_F(AISetupViewModelTest, ThePageLooksAgainEachTimeItIsEntered)
{
    setup->chooseLocalModel();
    detect(bothRun);
    setup->back();

    setup->chooseLocalModel();
    runUntilIdle();

    EXPECT_EQ(detector.begunCount(), 2);
    EXPECT_TRUE(setup->isCheckingLocalServers());
    EXPECT_EQ(setup->localServerStatuses(), bothRun);
}

} // namespace
} // namespace vantrel::test
