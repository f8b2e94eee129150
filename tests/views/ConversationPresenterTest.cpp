#include "views/ConversationPresenter.h"

#include "OpenedFile.h"
#include "Samples.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ConversationPresenterTest : public testing::Test
{
protected:
    ConversationPresenterTest() { presenter.setDiff(&file.diff()); }

    void explain()
    {
        file.complete(HunkExplanation{u"Bug fix"_s, u"Waits."_s, {}, {u"Tested?"_s, u"Why?"_s}});
    }

    OpenedFile file{changedFile(u"a.cpp"_s, 2)};
    ConversationPresenter presenter{};
};

TEST_F(ConversationPresenterTest, TheInputIsDisabledWhileTheHunkIsExplained)
{
    EXPECT_TRUE(presenter.isChatInputDisabled());
    const QSignalSpy changes(&presenter, &ConversationPresenter::isChatInputDisabledChanged);

    explain();

    EXPECT_FALSE(presenter.isChatInputDisabled());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ConversationPresenterTest, TheInputIsDisabledWithoutAHunk)
{
    OpenedFile empty(changedFile(u"logo.png"_s, 0));

    presenter.setDiff(&empty.diff());

    EXPECT_TRUE(presenter.isChatInputDisabled());
    EXPECT_EQ(presenter.chat(), nullptr);
    EXPECT_EQ(presenter.questions(), QStringList());
    presenter.setDiff(nullptr);
}

TEST_F(ConversationPresenterTest, AFailedExplanationLeavesTheInputOpen)
{
    AIServiceError error;
    error.message = u"Rate limited."_s;

    file.fail(error);

    EXPECT_FALSE(presenter.isChatInputDisabled());
}

TEST_F(ConversationPresenterTest, ShowsTheConversationOfTheSelectedHunk)
{
    const QSignalSpy changes(&presenter, &ConversationPresenter::chatChanged);
    EXPECT_EQ(presenter.chat(), file.diff().chatViewModel(0));

    file.diff().select(1);

    EXPECT_EQ(presenter.chat(), file.diff().chatViewModel(1));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ConversationPresenterTest, ShowsTheQuestionsOfTheExplanation)
{
    explain();

    EXPECT_EQ(presenter.questions(), (QStringList{u"Tested?"_s, u"Why?"_s}));
}

TEST_F(ConversationPresenterTest, ADraftOfMoreThanBlanksCanBeSent)
{
    explain();
    EXPECT_FALSE(presenter.canSend());
    presenter.setDraft(u" \n"_s);
    EXPECT_FALSE(presenter.canSend());

    presenter.setDraft(u"Why?"_s);

    EXPECT_TRUE(presenter.canSend());
}

TEST_F(ConversationPresenterTest, NothingIsSentWhileTheHunkIsExplained)
{
    presenter.setDraft(u"Why?"_s);

    presenter.send();

    EXPECT_FALSE(presenter.canSend());
    EXPECT_EQ(presenter.draft(), u"Why?"_s);
    EXPECT_FALSE(presenter.chat()->isReplyInProgress());
}

TEST_F(ConversationPresenterTest, SendsTheDraft)
{
    explain();
    presenter.setDraft(u"Why?"_s);

    presenter.send();

    EXPECT_EQ(presenter.draft(), QString());
    EXPECT_FALSE(presenter.canSend());
    EXPECT_TRUE(presenter.chat()->isReplyInProgress());
}

TEST_F(ConversationPresenterTest, ASuggestedQuestionIsSentInPlaceOfTheDraft)
{
    explain();
    presenter.setDraft(u"Half a"_s);

    presenter.ask(1);

    EXPECT_EQ(presenter.chat()->messages().first().text, u"Why?"_s);
}

TEST_F(ConversationPresenterTest, AQuestionThatIsNotThereIsNotAsked)
{
    explain();

    presenter.ask(2);
    presenter.ask(-1);

    EXPECT_TRUE(presenter.chat()->messages().isEmpty());
}

TEST_F(ConversationPresenterTest, ShowsAFailureWithTheWordsThatLeadToTheSettings)
{
    explain();
    presenter.setDraft(u"Why?"_s);
    presenter.send();
    runUntil([this] { return file.services().ai.chats.size() == 1; });
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;

    file.services().ai.chats.at(0).fail(AIFailure(error));
    runUntilIdle();

    EXPECT_EQ(presenter.message(), u"Add an API key in Settings to use AI features."_s);
    EXPECT_EQ(presenter.recoveryLabel(), u"Add an API key in Settings →"_s);
}

TEST_F(ConversationPresenterTest, ADraftStaysWithItsHunk)
{
    explain();
    presenter.setDraft(u"Half a"_s);

    file.diff().select(1);
    EXPECT_EQ(presenter.draft(), QString());
    file.diff().select(0);

    EXPECT_EQ(presenter.draft(), u"Half a"_s);
}

} // namespace
} // namespace vantrel::test
