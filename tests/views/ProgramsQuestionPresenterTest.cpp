#include "views/ProgramsQuestionPresenter.h"

#include "ScreenServices.h"

#include "app/RootViewModel.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ProgramsQuestionPresenterTest : public testing::Test
{
protected:
    ProgramsQuestionPresenterTest() { m_presenter.setPicker(m_root.picker()); }

    /// Opens a repository of this name with these programs, up to the question.
    void ask(const QString &name, const QList<RepositoryProgram> &programs)
    {
        QDir(m_folder.path()).mkpath(name + u"/.git"_s);
        m_services.repositoryGuard->setPrograms(programs);
        m_root.openFolder(QUrl::fromLocalFile(m_folder.filePath(name)));
        runUntil([this] { return m_root.picker()->isAsking(); });
    }

    QTemporaryDir m_folder{};
    ScreenServices m_services{};
    RootViewModel m_root{m_services.review, m_services.recentRepos, m_services.repositoryGuard,
                         m_services.settings, m_services.setup};
    ProgramsQuestionPresenter m_presenter{};
};

TEST_F(ProgramsQuestionPresenterTest, HasNoWordsWithoutAQuestion)
{
    EXPECT_EQ(m_presenter.message(), QString());
    EXPECT_EQ(m_presenter.commands(), QString());
}

TEST_F(ProgramsQuestionPresenterTest, HasNoWordsWithoutAPicker)
{
    m_presenter.setPicker(nullptr);

    EXPECT_EQ(m_presenter.message(), QString());
    EXPECT_EQ(m_presenter.commands(), QString());
}

TEST_F(ProgramsQuestionPresenterTest, ListsEachCommandInALine)
{
    ask(u"orchard"_s, {{{}, u"filter.images.clean"_s, u"png -s %f"_s},
                       {u"libs/sub"_s, u"filter.case.process"_s, u"./run"_s}});

    EXPECT_EQ(m_presenter.message(), u"To read the changes of “orchard”, git would run these "
                                     "commands, which come with the repository."_s);
    EXPECT_EQ(m_presenter.commands(), u"filter.images.clean = png -s %f\n"
                                      "libs/sub: filter.case.process = ./run"_s);
}

TEST_F(ProgramsQuestionPresenterTest, ShowsWhatWouldHideOrReorderACommand)
{
    ask(u"or\u202echard"_s, {{{}, u"filter.a.clean"_s, u"true\n\u202e\x1b[2K"_s}});

    EXPECT_TRUE(m_presenter.message().contains(u"“or‹202E›chard”"_s));
    EXPECT_EQ(m_presenter.commands(), u"filter.a.clean = true␊‹202E›␛[2K"_s);
}

TEST_F(ProgramsQuestionPresenterTest, AnnouncesTheQuestionAndItsEnd)
{
    int changes = 0;
    QObject::connect(&m_presenter, &ProgramsQuestionPresenter::changed, [&changes] { ++changes; });

    ask(u"orchard"_s, {{{}, u"filter.a.clean"_s, u"x"_s}});
    m_root.picker()->cancelOpening();

    EXPECT_EQ(changes, 2);
    EXPECT_EQ(m_presenter.commands(), QString());
}

} // namespace
} // namespace vantrel::test
