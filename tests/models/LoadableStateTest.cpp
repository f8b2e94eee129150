#include "models/LoadableState.h"

#include <QList>

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

using TextState = LoadableState<QString>;

TEST(LoadableState, BeginsIdle)
{
    const TextState state;

    EXPECT_TRUE(state.isIdle());
    EXPECT_EQ(state, TextState::idle());
}

TEST(LoadableState, IsExactlyOneOfItsCases)
{
    const QList<TextState> states{TextState::idle(), TextState::loading(),
                                  TextState::loaded(u"a"_s), TextState::failed(u"a"_s)};

    QList<QList<bool>> cases;
    for (const TextState &state : states) {
        cases.append({state.isIdle(), state.isLoading(), state.isLoaded(), state.isFailed()});
    }

    const QList<QList<bool>> expected{{true, false, false, false},
                                      {false, true, false, false},
                                      {false, false, true, false},
                                      {false, false, false, true}};
    EXPECT_EQ(cases, expected);
}

TEST(LoadableState, HoldsItsValueOnlyWhenLoaded)
{
    const TextState loaded = TextState::loaded(u"summary"_s);

    ASSERT_NE(loaded.value(), nullptr);
    EXPECT_EQ(*loaded.value(), u"summary"_s);
    EXPECT_EQ(loaded.message(), nullptr);
    EXPECT_EQ(TextState::idle().value(), nullptr);
    EXPECT_EQ(TextState::loading().value(), nullptr);
    EXPECT_EQ(TextState::failed(u"summary"_s).value(), nullptr);
}

TEST(LoadableState, HoldsItsMessageOnlyWhenFailed)
{
    const TextState failed = TextState::failed(u"No answer."_s);

    ASSERT_NE(failed.message(), nullptr);
    EXPECT_EQ(*failed.message(), u"No answer."_s);
    EXPECT_EQ(failed.value(), nullptr);
    EXPECT_EQ(TextState::idle().message(), nullptr);
    EXPECT_EQ(TextState::loading().message(), nullptr);
    EXPECT_EQ(TextState::loaded(u"No answer."_s).message(), nullptr);
}

TEST(LoadableState, TheSameCaseWithTheSamePayloadIsEqual)
{
    EXPECT_EQ(TextState::loading(), TextState::loading());
    EXPECT_EQ(TextState::loaded(u"a"_s), TextState::loaded(u"a"_s));
    EXPECT_EQ(TextState::failed(u"a"_s), TextState::failed(u"a"_s));
}

TEST(LoadableState, AnotherCaseOrPayloadIsUnequal)
{
    EXPECT_NE(TextState::idle(), TextState::loading());
    EXPECT_NE(TextState::loading(), TextState::loaded(QString()));
    EXPECT_NE(TextState::loaded(u"a"_s), TextState::loaded(u"b"_s));
    EXPECT_NE(TextState::failed(u"a"_s), TextState::failed(u"b"_s));
    EXPECT_NE(TextState::loaded(u"a"_s), TextState::failed(u"a"_s));
}

} // namespace vantrel
