#include "ai/config/AppAppearance.h"

#include <gtest/gtest.h>

#include <QSet>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(AppAppearance, IsListedWithTheSystemsFirst)
{
    const std::array expected{AppAppearance::system, AppAppearance::light, AppAppearance::dark};

    EXPECT_EQ(allAppAppearances, expected);
}

TEST(AppAppearance, HasAStoredForm)
{
    EXPECT_EQ(rawValue(AppAppearance::system), u"system"_s);
    EXPECT_EQ(rawValue(AppAppearance::light), u"light"_s);
    EXPECT_EQ(rawValue(AppAppearance::dark), u"dark"_s);
}

TEST(AppAppearance, IsReadFromItsStoredFormOnly)
{
    EXPECT_EQ(appAppearanceFromRawValue(u"system"), AppAppearance::system);
    EXPECT_EQ(appAppearanceFromRawValue(u"light"), AppAppearance::light);
    EXPECT_EQ(appAppearanceFromRawValue(u"dark"), AppAppearance::dark);
    EXPECT_EQ(appAppearanceFromRawValue(u"Dark"), std::nullopt);
    EXPECT_EQ(appAppearanceFromRawValue(u""), std::nullopt);
}

TEST(AppAppearance, IsHashable)
{
    const QSet<AppAppearance> appearances{AppAppearance::dark, AppAppearance::light,
                                          AppAppearance::dark};

    EXPECT_EQ(appearances.size(), 2);
}

} // namespace
} // namespace vantrel
