#include "onboarding/AISetupSheet.h"

#include "onboarding/AISetupSession.h"
#include "onboarding/AISetupViewModelFixture.h"

#include <QCoreApplication>
#include <QPointer>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class AISetupSheetTest : public AISetupViewModelTest
{
protected:
    AISetupSheetTest()
    {
        QObject::connect(sheet.get(), &AISetupSheet::viewModelChanged, [this] { ++changes; });
    }

    void useLocalModel()
    {
        sheet->viewModel()->chooseLocalModel();
        detector.finish(
            {{LocalModelServer::ollama, LocalModelServerStatus::running({u"llama3"_s})}});
        runUntilIdle();
        sheet->viewModel()->useLocalModel();
    }

    AISetupSession session{};
    AISetupPresenter presenter{{store, presence, session, notificationCenter}};
    std::unique_ptr<AISetupSheet> sheet = std::make_unique<AISetupSheet>(
        presenter,
        AISetupViewModel::Services{store, worker, notice, presence, signIn, detector, defaults,
                                   notificationCenter, [] {}, [](const QUrl &) { return true; }});
    int changes = 0;
};

TEST_F(AISetupSheetTest, HasPagesOnlyWhileItIsShown)
{
    EXPECT_EQ(sheet->viewModel(), nullptr);

    sheet->open();
    ASSERT_NE(sheet->viewModel(), nullptr);
    EXPECT_EQ(sheet->viewModel()->step(), Step::choose);
    sheet->open();
    EXPECT_EQ(changes, 1);

    sheet->close();
    EXPECT_EQ(sheet->viewModel(), nullptr);
    EXPECT_EQ(presenter.isPresented(), false);
    EXPECT_EQ(changes, 2);
}

TEST_F(AISetupSheetTest, OpensByItselfWhenTheConfigurationCannotWork)
{
    const QString address = u"https://api.openai.com/v1"_s;
    store.saveAIConfig({AIProvider::openAI, address, u"gpt-6-luna"_s});
    sheet->openIfNeeded();
    EXPECT_EQ(sheet->viewModel(), nullptr);

    store.saveAIConfig({AIProvider::openAI, address, u" "_s});
    sheet->openIfNeeded();
    EXPECT_NE(sheet->viewModel(), nullptr);
}

TEST_F(AISetupSheetTest, OpensForARequestThatFindsNoKey)
{
    notificationCenter.post(aiSetupRequired);

    EXPECT_NE(sheet->viewModel(), nullptr);
}

TEST_F(AISetupSheetTest, BeginsAnewEachTime)
{
    sheet->open();
    sheet->viewModel()->choosePasteKey();
    sheet->viewModel()->setApiKeyDraft(u"sk-1"_s);
    const QPointer<AISetupViewModel> former = sheet->viewModel();

    sheet->close();
    EXPECT_EQ(former->apiKeyDraft(), QString());
    sheet->open();

    EXPECT_EQ(sheet->viewModel()->step(), Step::choose);
    EXPECT_EQ(sheet->viewModel()->apiKeyDraft(), QString());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(former, nullptr);
}

TEST_F(AISetupSheetTest, AnnouncesWhatWasSetUpOnceItIsGone)
{
    bool isThere = true;
    const auto observer = notificationCenter.observe(
        aiConfigurationDidChange, [&] { isThere = sheet->viewModel() != nullptr; });
    sheet->open();
    useLocalModel();
    EXPECT_EQ(announcements, 0);

    sheet->close();

    EXPECT_EQ(announcements, 1);
    EXPECT_FALSE(isThere);
}

TEST_F(AISetupSheetTest, AnnouncesNothingThatWasNotSetUp)
{
    sheet->open();
    sheet->viewModel()->chooseLocalModel();

    sheet->close();

    EXPECT_EQ(announcements, 0);
}

TEST_F(AISetupSheetTest, ARequestThatTheAnnouncementLedToMayShowItAnew)
{
    const auto observer = notificationCenter.observe(
        aiConfigurationDidChange, [this] { notificationCenter.post(aiSetupRequired); });
    sheet->open();
    useLocalModel();

    sheet->close();

    ASSERT_NE(sheet->viewModel(), nullptr);
    EXPECT_EQ(sheet->viewModel()->step(), Step::choose);
}

TEST_F(AISetupSheetTest, GoesAwayWithItsPages)
{
    sheet->open();
    sheet->viewModel()->startSignIn();
    runUntilIdle();

    sheet.reset();

    EXPECT_EQ(signIn.runningCount(), 0);
}

} // namespace
} // namespace vantrel::test
