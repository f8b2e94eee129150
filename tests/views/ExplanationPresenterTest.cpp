#include "views/ExplanationPresenter.h"

#include "OpenedFile.h"
#include "Samples.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using State = ExplanationPresenter::State;

class ExplanationPresenterTest : public testing::Test
{
protected:
    ExplanationPresenterTest() { presenter.setDiff(&file.diff()); }

    OpenedFile file{changedFile(u"a.cpp"_s, 2)};
    ExplanationPresenter presenter{};
};

TEST_F(ExplanationPresenterTest, ReadsUntilTheFirstWordsCome)
{
    EXPECT_EQ(presenter.state(), State::Reading);
    EXPECT_EQ(presenter.prose(), QString());
}

TEST_F(ExplanationPresenterTest, ShowsTheProseThatHasComeSoFar)
{
    file.pushProse(u"A token "_s);
    file.pushProse(u"is refreshed"_s);

    EXPECT_EQ(presenter.state(), State::Streaming);
    EXPECT_EQ(presenter.prose(), u"A token is refreshed"_s);
}

TEST_F(ExplanationPresenterTest, AnnouncesTheEndAtOnceThoughProseWaitsForTheNextFrame)
{
    file.pushProse(u"A token "_s);
    file.pushProse(u"is refreshed"_s);
    const QSignalSpy changes(&presenter, &ExplanationPresenter::changed);

    file.pushProse(u" once."_s);
    EXPECT_EQ(changes.count(), 0);
    file.complete(HunkExplanation());

    EXPECT_GE(changes.count(), 1);
}

TEST_F(ExplanationPresenterTest, ShowsTagProseAndPointsOnceLoaded)
{
    HunkExplanation explanation;
    explanation.tag = u"Bug fix"_s;
    explanation.explanation = u"A token is refreshed once."_s;
    explanation.points = {u"One."_s, u"Two."_s};

    file.complete(explanation);

    EXPECT_EQ(presenter.state(), State::Loaded);
    EXPECT_EQ(presenter.tag(), explanation.tag);
    EXPECT_EQ(presenter.prose(), explanation.explanation);
    EXPECT_EQ(presenter.points(), explanation.points);
    EXPECT_EQ(presenter.message(), QString());
}

TEST_F(ExplanationPresenterTest, ShowsAFailureWithTheWordsThatLeadToTheSettings)
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;

    file.fail(error);

    EXPECT_EQ(presenter.state(), State::Failed);
    EXPECT_EQ(presenter.message(), u"Add an API key in Settings to use AI features."_s);
    EXPECT_EQ(presenter.recoveryLabel(), u"Add an API key in Settings →"_s);
    EXPECT_EQ(presenter.prose(), QString());
}

TEST_F(ExplanationPresenterTest, HasNoWordsToTheSettingsForAFailureThatTheyCannotMend)
{
    AIServiceError error;
    error.message = u"Rate limited."_s;

    file.fail(error);

    EXPECT_EQ(presenter.message(), u"Rate limited."_s);
    EXPECT_EQ(presenter.recoveryLabel(), QString());
}

TEST_F(ExplanationPresenterTest, IsSilentAboutOtherHunks)
{
    const QSignalSpy changes(&presenter, &ExplanationPresenter::changed);

    file.completeInBackground(HunkExplanation{u"Bug fix"_s, u"Waits."_s, {}, {}});

    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ExplanationPresenterTest, HasNothingWithoutAHunk)
{
    OpenedFile empty(changedFile(u"logo.png"_s, 0));

    presenter.setDiff(&empty.diff());

    EXPECT_EQ(presenter.state(), State::None);
    presenter.setDiff(nullptr);
}

} // namespace
} // namespace vantrel::test
