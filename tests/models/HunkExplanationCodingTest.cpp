#include "models/HunkExplanationCoding.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

HunkExplanation explanation()
{
    return HunkExplanation{
        u"Bug fix"_s, u"Zählt ab eins."_s, {u"one"_s, u"two"_s, u"three"_s}, {u"Why?"_s}};
}

CodingError errorOf(const QJsonValue &value)
{
    const auto decoded = hunkExplanationFromJson(value);
    return decoded ? CodingError{CodingError::Case::invalidValue, u"nothing failed"_s}
                   : decoded.error();
}

using Case = CodingError::Case;

} // namespace

TEST(HunkExplanationCoding, AnExplanationHasTheStoredForm)
{
    const QByteArray json = QJsonDocument(toJson(explanation())).toJson(QJsonDocument::Compact);

    EXPECT_EQ(json, QByteArray("{\"explanation\":\"Zählt ab eins.\","
                               "\"points\":[\"one\",\"two\",\"three\"],"
                               "\"suggestedQuestions\":[\"Why?\"],\"tag\":\"Bug fix\"}"));
}

TEST(HunkExplanationCoding, AnExplanationSurvivesEncodingAndDecoding)
{
    EXPECT_EQ(hunkExplanationFromJson(toJson(explanation())), explanation());
    EXPECT_EQ(hunkExplanationFromJson(toJson(HunkExplanation())), HunkExplanation());
}

TEST(HunkExplanationCoding, EachKeyIsRequired)
{
    for (const QString &key : {u"tag"_s, u"explanation"_s, u"points"_s, u"suggestedQuestions"_s}) {
        QJsonObject object = toJson(explanation());
        object.remove(key);

        EXPECT_EQ(errorOf(object), (CodingError{Case::missingKey, key}));
    }
}

TEST(HunkExplanationCoding, AValueOfAnotherTypeFails)
{
    for (const QString &key : {u"tag"_s, u"explanation"_s, u"points"_s, u"suggestedQuestions"_s}) {
        QJsonObject object = toJson(explanation());
        object[key] = 1;

        EXPECT_EQ(errorOf(object), (CodingError{Case::wrongType, key}));
    }
}

TEST(HunkExplanationCoding, AListThatHoldsAnythingButTextFails)
{
    QJsonObject object = toJson(explanation());
    object[u"points"_s] = QJsonArray{u"one"_s, 2};

    EXPECT_EQ(errorOf(object), (CodingError{Case::wrongType, u"points"_s}));
}

TEST(HunkExplanationCoding, WhatIsNoObjectFails)
{
    EXPECT_EQ(errorOf(u"text"_s), (CodingError{Case::notAnObject, QString()}));
}

} // namespace vantrel
