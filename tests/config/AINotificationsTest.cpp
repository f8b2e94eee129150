#include "ai/config/AINotifications.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(AINotifications, HaveTheirFixedNames)
{
    EXPECT_EQ(aiConfigurationDidChange, u"com.orbisk.aiConfigurationDidChange"_s);
    EXPECT_EQ(aiSetupRequired, u"com.orbisk.aiSetupRequired"_s);
}

} // namespace
} // namespace vantrel
