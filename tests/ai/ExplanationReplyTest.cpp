#include "ai/ExplanationReply.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>

namespace vantrel {

void PrintTo(const HunkExplanation &explanation, std::ostream *out)
{
    *out << "[" << qPrintable(explanation.tag) << "] \"" << qPrintable(explanation.explanation)
         << "\" (" << qPrintable(explanation.points.join(u'|')) << ") ("
         << qPrintable(explanation.suggestedQuestions.join(u'|')) << ")";
}

namespace {

using namespace Qt::Literals::StringLiterals;

HunkExplanation explanation(const QString &tag, const QString &text, const QStringList &points = {},
                            const QStringList &questions = {})
{
    HunkExplanation result;
    result.tag = tag;
    result.explanation = text;
    result.points = points;
    result.suggestedQuestions = questions;
    return result;
}

/// What a reply with this text behind the delimiter amounts to.
HunkExplanation withMetadata(const QString &metadata, const QString &prose = u"a"_s)
{
    return explanationFromReply(prose, metadata);
}

/// What a reply amounts to in which the delimiter never came.
HunkExplanation withoutMetadata(const QString &prose)
{
    return explanationFromReply(prose, std::nullopt);
}

TEST(ExplanationReply, HoldsEveryPartOfTheMetadata)
{
    EXPECT_EQ(withMetadata(u"\n{\"tag\":\"T\",\"points\":[\"p\",\"q\"],"
                           "\"suggestedQuestions\":[\"r?\"],\"explanation\":\"other\"}\n"_s,
                           u"prose"_s),
              explanation(u"T"_s, u"prose"_s, {u"p"_s, u"q"_s}, {u"r?"_s}));
}

TEST(ExplanationReply, TheProseIsTrimmed)
{
    EXPECT_EQ(withMetadata(u"{}"_s, u" \r\n\tOne.\n\nTwo.\n"_s),
              explanation(u"Change"_s, u"One.\n\nTwo."_s));
    EXPECT_EQ(withoutMetadata(u" \n One. ---\n"_s), explanation(u"Change"_s, u"One. ---"_s));
}

TEST(ExplanationReply, MetadataInACodeFenceIsRead)
{
    for (const QString &metadata :
         {u"\n```json\n{\"tag\":\"T\"}\n```\n"_s, u"```\n{\"tag\":\"T\"}\n```"_s,
          u"```json{\"tag\":\"T\"}```"_s, u"```json\n{\"tag\":\"T\"}"_s,
          u"```json\n```json\n{\"tag\":\"T\"}\n```\n```"_s}) {
        EXPECT_EQ(withMetadata(metadata), explanation(u"T"_s, u"a"_s)) << qPrintable(metadata);
    }
}

TEST(ExplanationReply, BackticksWithinMetadataThatIsNotFencedStay)
{
    EXPECT_EQ(withMetadata(u"{\"tag\":\"T\",\"points\":[\"a ``` b\"]}"_s),
              explanation(u"T"_s, u"a"_s, {u"a ``` b"_s}));
}

TEST(ExplanationReply, ProseBehindTheMetadataDoesNotMatter)
{
    EXPECT_EQ(withMetadata(u"{\"tag\":\"T\"}\nI hope this helps."_s), explanation(u"T"_s, u"a"_s));
}

TEST(ExplanationReply, ProseBeforeTheMetadataDoesNotMatter)
{
    EXPECT_EQ(withMetadata(u"Here: {\"tag\":\"T\"}"_s), explanation(u"T"_s, u"a"_s));
}

TEST(ExplanationReply, BracesInTheProseBehindTheMetadataSpoilIt)
{
    EXPECT_EQ(withMetadata(u"{\"tag\":\"T\"} and {more}"_s), explanation(u"Change"_s, u"a"_s));
}

TEST(ExplanationReply, TheTagIsTrimmed)
{
    EXPECT_EQ(withMetadata(u"{\"tag\":\"  Bug fix \\n\"}"_s), explanation(u"Bug fix"_s, u"a"_s));
}

TEST(ExplanationReply, AnEmptyTagIsAChange)
{
    for (const QString &metadata : {u"{\"tag\":\"\"}"_s, u"{\"tag\":\" \\n\"}"_s, u"{}"_s,
                                    u"{\"tag\":null}"_s, QString(), u"no json"_s, u"}{"_s}) {
        EXPECT_EQ(withMetadata(metadata), explanation(u"Change"_s, u"a"_s)) << qPrintable(metadata);
    }
}

TEST(ExplanationReply, KeysThatAreNullAreMissing)
{
    EXPECT_EQ(withMetadata(u"{\"tag\":\"T\",\"points\":null,\"suggestedQuestions\":null,"
                           "\"explanation\":null}"_s,
                           QString()),
              explanation(u"T"_s, QString()));
}

TEST(ExplanationReply, MetadataOfAWrongTypeIsNone)
{
    for (const QString &metadata :
         {u"{\"tag\":\"T\",\"points\":\"p\"}"_s, u"{\"tag\":\"T\",\"points\":[1]}"_s,
          u"{\"tag\":\"T\",\"points\":[\"p\",null]}"_s,
          u"{\"tag\":\"T\",\"suggestedQuestions\":{}}"_s, u"{\"tag\":\"T\",\"explanation\":1}"_s,
          u"{\"points\":[\"p\"],\"tag\":1}"_s, u"[\"tag\",\"T\"]"_s, u"{\"tag\":\"T\""_s}) {
        EXPECT_EQ(withMetadata(metadata), explanation(u"Change"_s, u"a"_s)) << qPrintable(metadata);
    }
}

TEST(ExplanationReply, PointsAndQuestionsAreTakenAsTheyStand)
{
    EXPECT_EQ(withMetadata(u"{\"points\":[\" p \",\"\",\"r\"],"
                           "\"suggestedQuestions\":[\"q?\",\"q?\",\" \"],\"more\":1}"_s),
              explanation(u"Change"_s, u"a"_s, {u" p "_s, QString(), u"r"_s},
                          {u"q?"_s, u"q?"_s, u" "_s}));
}

TEST(ExplanationReply, WithoutProseTheMetadatasExplanationCounts)
{
    EXPECT_EQ(withMetadata(u"{\"explanation\":\" as it is \"}"_s, u" \n"_s),
              explanation(u"Change"_s, u" as it is "_s));
}

TEST(ExplanationReply, WithProseTheMetadatasExplanationDoesNotCount)
{
    EXPECT_EQ(withMetadata(u"{\"explanation\":\"other\"}"_s, u"prose"_s),
              explanation(u"Change"_s, u"prose"_s));
}

TEST(ExplanationReply, WithNeitherTheExplanationIsEmpty)
{
    EXPECT_EQ(withMetadata(u"{}"_s, QString()), explanation(u"Change"_s, QString()));
}

TEST(ExplanationReply, BeforeADelimiterTheOlderFormIsProse)
{
    const QString prose = u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}"_s;

    EXPECT_EQ(withMetadata(QString(), prose), explanation(u"Change"_s, prose));
}

TEST(ExplanationReply, TheOlderFormIsOneObject)
{
    EXPECT_EQ(withoutMetadata(u"{\"tag\":\" T \",\"explanation\":\" e \",\"points\":[\"p\"]}"_s),
              explanation(u" T "_s, u" e "_s, {u"p"_s}));
}

TEST(ExplanationReply, BlanksAroundTheOlderFormAndUnknownKeysDoNotMatter)
{
    EXPECT_EQ(withoutMetadata(
                  u" \n{\"more\":{},\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}\r\n"_s),
              explanation(u"T"_s, u"e"_s));
}

TEST(ExplanationReply, TheOlderFormMayHoldQuestions)
{
    EXPECT_EQ(withoutMetadata(u"{\"tag\":\"\",\"explanation\":\"e\",\"points\":[],"
                              "\"suggestedQuestions\":[\"q\"]}"_s),
              explanation(QString(), u"e"_s, {}, {u"q"_s}));
    EXPECT_EQ(withoutMetadata(u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[],"
                              "\"suggestedQuestions\":null}"_s),
              explanation(u"T"_s, u"e"_s));
}

TEST(ExplanationReply, TheOlderFormMayStandInACodeFence)
{
    const QString object = u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}"_s;

    for (const QString &reply :
         {QString(u"```json\n"_s + object + u"\n```"_s), QString(u"```\n"_s + object + u"```"_s),
          QString(u"\n```json"_s + object)}) {
        EXPECT_EQ(withoutMetadata(reply), explanation(u"T"_s, u"e"_s)) << qPrintable(reply);
    }
}

class NotTheOlderFormTest : public testing::TestWithParam<QString>
{};

TEST_P(NotTheOlderFormTest, IsProse)
{
    EXPECT_EQ(withoutMetadata(GetParam()), explanation(u"Change"_s, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    ExplanationReply, NotTheOlderFormTest,
    testing::Values(QString(), u"\ufeff{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}"_s,
                    u"{\"tag\":\"T\",\"explanation\":\"e\"}"_s,
                    u"{\"explanation\":\"e\",\"points\":[]}"_s, u"{\"tag\":\"T\",\"points\":[]}"_s,
                    u"{\"tag\":null,\"explanation\":\"e\",\"points\":[]}"_s,
                    u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":null}"_s,
                    u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]} and more"_s,
                    u"Here: {\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}"_s,
                    u"```json\n{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}\n``` and more"_s,
                    u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[1]}"_s,
                    u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[],"
                    "\"suggestedQuestions\":\"q\"}"_s,
                    u"[1]"_s));

} // namespace
} // namespace vantrel
