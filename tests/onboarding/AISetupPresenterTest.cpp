#include "onboarding/AISetupPresenter.h"

#include "ai/config/AINotifications.h"
#include "ai/config/SettingsStore.h"
#include "onboarding/AISetupSession.h"
#include "persistence/APIKeyPresenceStore.h"
#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <memory>
#include <thread>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString openRouterURL = u"https://openrouter.ai/api/v1"_s;
const QString model = u"google/gemini-3.8-flash"_s;
const AIProviderConfig completeConfig{AIProvider::openRouter, openRouterURL, model};

class AISetupPresenterTest : public testing::Test
{
protected:
    AISetupPresenterTest()
    {
        store.saveAIConfig(completeConfig);
        makePresenter();
    }

    void makePresenter()
    {
        presenter = std::make_unique<AISetupPresenter>(
            AISetupPresenter::Services{store, presence, session, notificationCenter});
        QObject::connect(presenter.get(), &AISetupPresenter::isPresentedChanged,
                         [this] { ++changes; });
    }

    /// Whether the sheet opens by itself with this configuration.
    bool opensWith(const AIProviderConfig &config)
    {
        store.saveAIConfig(config);
        session = AISetupSession();
        presenter->setIsPresented(false);
        presenter->presentAutomaticallyIfNeeded();
        return presenter->isPresented();
    }

    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    SettingsStore store{defaults};
    APIKeyPresenceStore presence{defaults};
    AISetupSession session{};
    NotificationCenter notificationCenter{};
    std::unique_ptr<AISetupPresenter> presenter{};
    int changes = 0;
};

TEST_F(AISetupPresenterTest, ShowsNothingWhenItIsMade)
{
    EXPECT_FALSE(presenter->isPresented());
    EXPECT_FALSE(session.hasPresentedAutomatically);
}

TEST_F(AISetupPresenterTest, ADefaultConfigurationAndAnUnknownKeyDoNotOpenTheSheet)
{
    presenter->presentAutomaticallyIfNeeded();

    EXPECT_FALSE(presenter->isPresented());
    EXPECT_FALSE(session.hasPresentedAutomatically);
    EXPECT_EQ(changes, 0);
}

TEST_F(AISetupPresenterTest, ARequestWithoutItsKeyOpensTheSheet)
{
    presenter->presentAutomaticallyIfNeeded();

    notificationCenter.post(aiSetupRequired);

    EXPECT_TRUE(presenter->isPresented());
    EXPECT_FALSE(session.hasPresentedAutomatically);
    EXPECT_EQ(changes, 1);
}

TEST_F(AISetupPresenterTest, AMissingKeyModelOrAddressOpensTheSheet)
{
    EXPECT_TRUE(opensWith({AIProvider::openRouter, openRouterURL, QString()}));
    EXPECT_TRUE(opensWith({AIProvider::openRouter, openRouterURL, u" \n"_s}));
    EXPECT_TRUE(opensWith({AIProvider::custom, QString(), model}));
    EXPECT_TRUE(opensWith({AIProvider::custom, u"localhost:1234"_s, model}));
    EXPECT_FALSE(opensWith(completeConfig));
    presence.markRemoved(AIProvider::openRouter);
    EXPECT_TRUE(opensWith(completeConfig));
    presence.markSaved(AIProvider::openRouter);
    EXPECT_FALSE(opensWith(completeConfig));
}

TEST_F(AISetupPresenterTest, ACustomProviderNeedsNoKey)
{
    presence.markRemoved(AIProvider::custom);

    EXPECT_FALSE(opensWith({AIProvider::custom, u"http://localhost:11434/v1"_s, model}));
}

TEST_F(AISetupPresenterTest, AnotherProvidersMissingKeyDoesNotMatter)
{
    presence.markRemoved(AIProvider::openAI);

    EXPECT_FALSE(opensWith(completeConfig));
}

TEST_F(AISetupPresenterTest, OpensByItselfOnceInARun)
{
    presence.markRemoved(AIProvider::openRouter);
    presenter->presentAutomaticallyIfNeeded();
    EXPECT_TRUE(session.hasPresentedAutomatically);
    presenter->setIsPresented(false);

    presenter->presentAutomaticallyIfNeeded();
    EXPECT_FALSE(presenter->isPresented());
    makePresenter();
    presenter->presentAutomaticallyIfNeeded();

    EXPECT_FALSE(presenter->isPresented());
}

TEST_F(AISetupPresenterTest, ARequestOpensTheSheetAgain)
{
    presence.markRemoved(AIProvider::openRouter);
    presenter->presentAutomaticallyIfNeeded();
    presenter->setIsPresented(false);

    notificationCenter.post(aiSetupRequired);

    EXPECT_TRUE(presenter->isPresented());
}

TEST_F(AISetupPresenterTest, ASheetThatIsShownDoesNotCountAsOpenedByItself)
{
    presence.markRemoved(AIProvider::openRouter);
    presenter->setIsPresented(true);

    presenter->presentAutomaticallyIfNeeded();

    EXPECT_FALSE(session.hasPresentedAutomatically);
    EXPECT_EQ(changes, 1);
}

TEST_F(AISetupPresenterTest, SeveralRequestsOpenOneSheet)
{
    notificationCenter.post(aiSetupRequired);
    notificationCenter.post(aiSetupRequired);
    presenter->setIsPresented(true);

    EXPECT_EQ(changes, 1);
}

TEST_F(AISetupPresenterTest, ARequestFromAnotherThreadOpensTheSheetOnThisOne)
{
    std::thread([this] { notificationCenter.post(aiSetupRequired); }).join();
    EXPECT_FALSE(presenter->isPresented());

    QCoreApplication::processEvents();

    EXPECT_TRUE(presenter->isPresented());
}

TEST_F(AISetupPresenterTest, ARequestAfterItsEndReachesNobody)
{
    std::thread([this] { notificationCenter.post(aiSetupRequired); }).join();

    presenter.reset();
    notificationCenter.post(aiSetupRequired);
    QCoreApplication::processEvents();

    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace vantrel::test
