#include "ai/config/ModelChoice.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(ModelChoice, OfAPresetIsNotCustom)
{
    const ModelChoice choice{u"gpt-6-luna"_s};

    EXPECT_FALSE(choice.isCustom());
    EXPECT_TRUE(ModelChoice::custom().isCustom());
}

TEST(ModelChoice, EqualsTheSameChoiceOnly)
{
    const ModelChoice luna{u"gpt-6-luna"_s};
    const ModelChoice sol{u"gpt-6-sol"_s};
    const ModelChoice unnamed{QString()};

    EXPECT_EQ(luna, ModelChoice{u"gpt-6-luna"_s});
    EXPECT_NE(luna, sol);
    EXPECT_NE(unnamed, ModelChoice::custom());
    EXPECT_EQ(ModelChoice::custom(), ModelChoice::custom());
}

TEST(ModelChoice, HashesAsItCompares)
{
    const ModelChoice luna{u"gpt-6-luna"_s};
    const ModelChoice unnamed{QString()};

    EXPECT_EQ(qHash(luna), qHash(ModelChoice{u"gpt-6-luna"_s}));
    EXPECT_NE(qHash(luna), qHash(ModelChoice{u"gpt-6-sol"_s}));
    EXPECT_NE(qHash(unnamed), qHash(ModelChoice::custom()));
}

} // namespace
} // namespace vantrel
