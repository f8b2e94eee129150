#include "views/ChatMessageListModel.h"

#include "OpenedFile.h"
#include "Samples.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ChatMessageListModelTest : public testing::Test
{
protected:
    ChatMessageListModelTest()
    {
        model.setChat(&chat());
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model,
                         [this](const QModelIndex &, int first, int last) {
                             signalled.append(u"inserted %1-%2"_s.arg(first).arg(last));
                         });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &model,
                         [this](const QModelIndex &, int first, int last) {
                             signalled.append(u"removed %1-%2"_s.arg(first).arg(last));
                         });
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                         [this](const QModelIndex &first, const QModelIndex &last) {
                             signalled.append(u"changed %1-%2"_s.arg(first.row()).arg(last.row()));
                         });
        QObject::connect(&model, &QAbstractItemModel::modelReset, &model,
                         [this] { signalled.append(u"reset"_s); });
    }

    [[nodiscard]] ChatThreadViewModel &chat() { return *file.diff().chatViewModel(0); }

    void ask(const QString &question)
    {
        const std::size_t asked = file.services().ai.chats.size();
        chat().setDraft(question);
        chat().send();
        runUntil([&] { return file.services().ai.chats.size() > asked; });
    }

    void push(const QString &delta)
    {
        file.services().ai.chats.back().push(delta);
        runUntilIdle();
    }

    void finish()
    {
        file.services().ai.chats.back().finish();
        runUntilIdle();
    }

    [[nodiscard]] QVariant value(int row, int role) const
    {
        return model.data(model.index(row), role);
    }

    OpenedFile file{changedFile(u"a.cpp"_s, 2)};
    ChatMessageListModel model{};
    QAbstractItemModelTester tester{&model,
                                    QAbstractItemModelTester::FailureReportingMode::Warning};
    QStringList signalled{};
};

TEST_F(ChatMessageListModelTest, AQuestionAndItsAnswerAreInsertedOneAfterTheOther)
{
    ask(u"Why?"_s);

    EXPECT_EQ(signalled, (QStringList{u"inserted 0-0"_s, u"inserted 1-1"_s}));
    EXPECT_EQ(value(0, ChatMessageListModel::TextRole), u"Why?"_s);
    EXPECT_EQ(value(0, ChatMessageListModel::IsQuestionRole), true);
    EXPECT_EQ(value(0, ChatMessageListModel::AccessibleNameRole), u"You: Why?"_s);
    EXPECT_EQ(value(1, ChatMessageListModel::IsQuestionRole), false);
    EXPECT_EQ(value(1, ChatMessageListModel::IsStreamingRole), true);
}

TEST_F(ChatMessageListModelTest, ADeltaChangesItsRowAlone)
{
    ask(u"Why?"_s);
    signalled.clear();

    push(u"Because"_s);

    EXPECT_EQ(signalled, QStringList{u"changed 1-1"_s});
    EXPECT_EQ(value(1, ChatMessageListModel::TextRole), u"Because"_s);
}

TEST_F(ChatMessageListModelTest, AnAnswerIsNamedOnceItIsComplete)
{
    ask(u"Why?"_s);
    push(u"Because."_s);
    EXPECT_EQ(value(1, ChatMessageListModel::AccessibleNameRole), QString());

    finish();

    EXPECT_EQ(value(1, ChatMessageListModel::AccessibleNameRole), u"Answer: Because."_s);
    EXPECT_EQ(value(1, ChatMessageListModel::IsStreamingRole), false);
}

TEST_F(ChatMessageListModelTest, AnAnswerIsNamedWithoutItsMarks)
{
    ask(u"Why *this*?"_s);

    push(u"Because of **it** and `that`."_s);
    finish();

    EXPECT_EQ(value(0, ChatMessageListModel::AccessibleNameRole), u"You: Why *this*?"_s);
    EXPECT_EQ(value(1, ChatMessageListModel::AccessibleNameRole),
              u"Answer: Because of it and that."_s);
}

TEST_F(ChatMessageListModelTest, AnAnswerWithoutAWordIsRemoved)
{
    ask(u"Why?"_s);
    signalled.clear();

    finish();

    EXPECT_EQ(signalled, QStringList{u"removed 1-1"_s});
    EXPECT_EQ(model.count(), 1);
}

TEST_F(ChatMessageListModelTest, AnswersOfMegabytesAreShownUpToAMeasure)
{
    ask(u"Why?"_s);

    push(QString(2'000'000, u'x'));

    EXPECT_LT(value(1, ChatMessageListModel::TextRole).toString().size(), 21'000);
    EXPECT_TRUE(value(1, ChatMessageListModel::TextRole).toString().endsWith(u'…'));
}

TEST_F(ChatMessageListModelTest, AnotherConversationResetsIt)
{
    ask(u"Why?"_s);
    signalled.clear();

    model.setChat(file.diff().chatViewModel(1));

    EXPECT_EQ(signalled, QStringList{u"reset"_s});
    EXPECT_EQ(model.count(), 0);
    push(u"Because."_s);
    EXPECT_EQ(signalled, QStringList{u"reset"_s}) << "the first conversation is not heard";
}

TEST_F(ChatMessageListModelTest, HasNoRowsWithoutAConversation)
{
    ask(u"Why?"_s);

    model.setChat(nullptr);

    EXPECT_EQ(model.count(), 0);
}

} // namespace
} // namespace vantrel::test
