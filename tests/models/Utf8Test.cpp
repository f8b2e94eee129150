#include "models/Utf8.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(TextFromUtf8, IsTheText)
{
    EXPECT_EQ(textFromUtf8("größer 👍"), u"größer 👍"_s);
    EXPECT_EQ(textFromUtf8({}), QString());
}

TEST(TextFromUtf8, EachByteOrderMarkIsACharacter)
{
    EXPECT_EQ(textFromUtf8("\xef\xbb\xbf"), u"\uFEFF"_s);
    EXPECT_EQ(textFromUtf8("\xef\xbb\xbf\xef\xbb\xbfint \xef\xbb\xbf"),
              u"\uFEFF\uFEFFint \uFEFF"_s);
}

TEST(TextFromUtf8, WhatIsNotUtf8IsReplacedBehindAMarkAsAnywhere)
{
    EXPECT_EQ(textFromUtf8("a\xff\xc3"), u"a\uFFFD\uFFFD"_s);
    EXPECT_EQ(textFromUtf8("\xef\xbb\xbf\xff\xc3"), u"\uFEFF\uFFFD\uFFFD"_s);
}

} // namespace
} // namespace vantrel
