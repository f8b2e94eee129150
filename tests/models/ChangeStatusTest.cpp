#include "models/ChangeStatus.h"

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

TEST(ChangeStatus, EachCaseHasItsLetter)
{
    EXPECT_EQ(rawValue(ChangeStatus::modified), u"M"_s);
    EXPECT_EQ(rawValue(ChangeStatus::added), u"A"_s);
    EXPECT_EQ(rawValue(ChangeStatus::deleted), u"D"_s);
}

TEST(ChangeStatus, EachLetterHasItsCase)
{
    EXPECT_EQ(changeStatusFromRawValue(u"M"), ChangeStatus::modified);
    EXPECT_EQ(changeStatusFromRawValue(u"A"), ChangeStatus::added);
    EXPECT_EQ(changeStatusFromRawValue(u"D"), ChangeStatus::deleted);
}

TEST(ChangeStatus, ALowerCaseLetterIsNone)
{
    EXPECT_EQ(changeStatusFromRawValue(u"m"), std::nullopt);
}

TEST(ChangeStatus, AnyOtherTextIsNone)
{
    EXPECT_EQ(changeStatusFromRawValue(u""), std::nullopt);
    EXPECT_EQ(changeStatusFromRawValue(u"R"), std::nullopt);
    EXPECT_EQ(changeStatusFromRawValue(u"MM"), std::nullopt);
    EXPECT_EQ(changeStatusFromRawValue(u" M"), std::nullopt);
}

} // namespace vantrel
