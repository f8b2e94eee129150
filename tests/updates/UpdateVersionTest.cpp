#include "updates/UpdateVersion.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(UpdateVersion, ComparesNumbersNotLetters)
{
    EXPECT_LT(readVersion(u"0.1.9"_s), readVersion(u"0.1.10"_s));
    EXPECT_LT(readVersion(u"0.9"_s), readVersion(u"0.10"_s));
    EXPECT_LT(readVersion(u"9"_s), readVersion(u"10"_s));
}

TEST(UpdateVersion, TakesZerosAtTheEndForNothing)
{
    EXPECT_EQ(readVersion(u"1.0"_s), readVersion(u"1.0.0"_s));
    EXPECT_EQ(readVersion(u"0"_s), UpdateVersion());
}

TEST(UpdateVersion, IsCountsWithDotsBetweenThem)
{
    EXPECT_EQ(readVersion(u"1.20.3"_s).value_or(UpdateVersion()).text(), u"1.20.3"_s);
    for (const QString &text :
         {u""_s, u"1."_s, u".1"_s, u"1..2"_s, u"v1"_s, u"1.0-2"_s, u" 1"_s, u"1. 2"_s, u"1.+2"_s,
          u"-1"_s, u"99999999999"_s, QString(65, u'1')}) {
        EXPECT_EQ(readVersion(text), std::nullopt) << qPrintable(text);
    }
}

} // namespace
} // namespace vantrel::test
