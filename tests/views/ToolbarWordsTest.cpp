#include "views/DiffToolbarPresenter.h"

#include "OpenedFile.h"
#include "Samples.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(DiffToolbarPresenter, CountsThePositionFromOne)
{
    OpenedFile file(changedFile(u"src/auth/token_store.cpp"_s, 4));
    DiffToolbarPresenter words;
    words.setDiff(&file.diff());

    file.diff().select(1);

    EXPECT_EQ(words.position(), u"Change 2 of 4"_s);
    EXPECT_EQ(words.folder(), u"src/auth/"_s);
    EXPECT_EQ(words.name(), u"token_store.cpp"_s);
    EXPECT_EQ(words.status(), u"M"_s);
    EXPECT_EQ(words.additions(), 4);
    EXPECT_EQ(words.deletions(), 4);
    EXPECT_FALSE(words.hasNothingToShow());
}

TEST(DiffToolbarPresenter, SaysThatAFileWithoutHunksHasNoChanges)
{
    OpenedFile file(changedFile(u"logo.png"_s, 0));
    DiffToolbarPresenter words;

    words.setDiff(&file.diff());

    EXPECT_EQ(words.position(), u"No changes"_s);
    EXPECT_TRUE(words.hasNothingToShow());
}

TEST(DiffToolbarPresenter, NamesWhatEachStepLeadsTo)
{
    OpenedFile file(changedFile(u"a.cpp"_s, 2), {changedFile(u"src/b.cpp"_s, 1)});
    DiffToolbarPresenter words;
    words.setDiff(&file.diff());

    EXPECT_EQ(words.previousName(), u"Previous change"_s);
    EXPECT_EQ(words.nextName(), u"Next change"_s);

    file.diff().select(1);

    EXPECT_EQ(words.previousName(), u"Previous change"_s);
    EXPECT_EQ(words.nextName(), u"Next file: b.cpp"_s);
}

} // namespace
} // namespace vantrel::test
