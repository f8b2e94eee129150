#include "platform/JsonDocument.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(DocumentFromJson, HoldsWhatIsWritten)
{
    EXPECT_EQ(documentFromJson(R"({"a":["größer",1,null]})").object(),
              (QJsonObject{{u"a"_s, QJsonArray{u"größer"_s, 1, QJsonValue()}}}));
}

TEST(DocumentFromJson, KeepsByteOrderMarksWhereverTheyStandInAText)
{
    EXPECT_EQ(documentFromJson("[\"\xef\xbb\xbf\",\"\xef\xbb\xbf\xef\xbb\xbf"
                               "a\",\"a\\\"\xef\xbb\xbf\",\"\\ufeff\xef\xbb\xbf\"]")
                  .array(),
              (QJsonArray{u"\uFEFF"_s, u"\uFEFF\uFEFFa"_s, u"a\"\uFEFF"_s, u"\uFEFF\uFEFF"_s}));
    EXPECT_EQ(documentFromJson("{\"\xef\xbb\xbfkey\":1}").object(),
              (QJsonObject{{u"\uFEFFkey"_s, 1}}));
}

TEST(DocumentFromJson, TextsAreTheSameAfterTheyHaveBeenWritten)
{
    const QJsonArray texts{u"\uFEFF\uFEFFa"_s, u"\"\uFEFF"_s, u"\\\uFEFF"_s, u"\\"_s, u"\uFEFF"_s};

    EXPECT_EQ(documentFromJson(QJsonDocument(texts).toJson()).array(), texts);
}

TEST(DocumentFromJson, AMarkOutsideOfTheTextsIsNoJson)
{
    EXPECT_TRUE(documentFromJson("[\"a\"\xef\xbb\xbf]").isNull());
    EXPECT_TRUE(documentFromJson("[\"a\",\xef\xbb\xbf\"b\"]").isNull());
    EXPECT_TRUE(documentFromJson("[").isNull());
}

} // namespace
} // namespace vantrel
