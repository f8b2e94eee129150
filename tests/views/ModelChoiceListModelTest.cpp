#include "views/ModelChoiceListModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString customEntry = u"Custom model ID…"_s;

/// The picker of OpenAI's models, with the first suggestion chosen.
class ModelChoiceListModelTest : public testing::Test
{
protected:
    ModelChoiceListModelTest()
    {
        QObject::connect(&model, &ModelChoiceListModel::presetChosen, [this](const QString &id) {
            chosen.append(u"preset "_s + id);
            model.setIsUsingCustomModel(false);
            model.setModel(id);
        });
        QObject::connect(&model, &ModelChoiceListModel::customChosen, [this](const QString &text) {
            chosen.append(u"custom "_s + text);
            model.setIsUsingCustomModel(true);
            model.setModel(text);
        });
        model.setProviderIndex(1);
        model.setModel(u"gpt-6-luna"_s);
    }

    [[nodiscard]] QStringList values(int role) const
    {
        QStringList values;
        for (int row = 0; row < model.rowCount(); ++row) {
            values.append(model.data(model.index(row), role).toString());
        }
        return values;
    }

    ModelChoiceListModel model{};
    QAbstractItemModelTester tester{&model,
                                    QAbstractItemModelTester::FailureReportingMode::Warning};
    QStringList chosen{}; ///< What was asked for, and granted.
};

TEST_F(ModelChoiceListModelTest, ListsTheSuggestionsInOrderAndTheCustomEntryLast)
{
    EXPECT_EQ(values(ModelChoiceListModel::NameRole),
              QStringList({u"GPT-6 Luna"_s, u"GPT-6 Sol"_s, customEntry}));
    EXPECT_EQ(values(ModelChoiceListModel::NoteRole),
              QStringList({u"Recommended. Fast and low cost."_s,
                           u"Higher quality. Costs more per review."_s, QString()}));
    EXPECT_TRUE(model.hasPresets());
    EXPECT_EQ(model.currentIndex(), 0);
    EXPECT_EQ(model.currentName(), u"GPT-6 Luna"_s);
}

TEST_F(ModelChoiceListModelTest, ACustomProviderHasTheCustomEntryAlone)
{
    model.setProviderIndex(2);
    model.setIsUsingCustomModel(true);

    EXPECT_FALSE(model.hasPresets());
    EXPECT_EQ(values(ModelChoiceListModel::NameRole), QStringList{customEntry});
    EXPECT_EQ(model.currentName(), customEntry);
}

TEST_F(ModelChoiceListModelTest, EachProviderHasItsExample)
{
    QStringList examples;
    for (const int provider : {0, 1, 2, 3}) {
        model.setProviderIndex(provider);
        examples.append(model.placeholder());
    }

    EXPECT_EQ(examples, QStringList({u"e.g. google/gemini-3.8-flash"_s, u"e.g. gpt-6-luna"_s,
                                     u"e.g. llama3.2"_s, QString()}));
}

TEST_F(ModelChoiceListModelTest, AModelOfNoRowHasNoName)
{
    model.setModel(u"llama3.2"_s);

    EXPECT_EQ(model.currentIndex(), -1);
    EXPECT_EQ(model.currentName(), QString());
}

TEST_F(ModelChoiceListModelTest, ATypedModelStaysCustomEvenWhenItIsASuggestion)
{
    model.setIsUsingCustomModel(true);
    model.setModel(u"gpt-6-sol"_s);

    EXPECT_EQ(model.currentIndex(), 2);
}

TEST_F(ModelChoiceListModelTest, TheCustomEntryIsEmptyAtFirst)
{
    model.choose(2);

    EXPECT_EQ(chosen, QStringList{u"custom "_s});
}

TEST_F(ModelChoiceListModelTest, WhatWasTypedComesBackWithTheCustomEntry)
{
    model.choose(2);
    model.setModel(u"gpt-5"_s);

    model.choose(1);
    model.choose(0);
    model.choose(2);

    EXPECT_EQ(chosen, QStringList({u"custom "_s, u"preset gpt-6-sol"_s, u"preset gpt-6-luna"_s,
                                   u"custom gpt-5"_s}));
}

TEST_F(ModelChoiceListModelTest, TheCustomEntryAgainKeepsWhatIsBeingTyped)
{
    model.choose(2);
    model.setModel(u"gpt-5"_s);

    model.choose(2);

    EXPECT_EQ(model.model(), u"gpt-5"_s);
}

TEST_F(ModelChoiceListModelTest, WhatWasTypedForOneProviderIsNotOfferedForAnother)
{
    model.choose(2);
    model.setModel(u"gpt-5"_s);
    model.choose(0);

    model.setProviderIndex(0);
    model.choose(3);

    EXPECT_EQ(chosen.last(), u"custom "_s);
}

TEST_F(ModelChoiceListModelTest, RowsThatAreNotThereCannotBeChosen)
{
    model.choose(-1);
    model.choose(3);

    EXPECT_EQ(chosen, QStringList());
}

} // namespace
} // namespace vantrel::test
