#include "ai/HunkExplanationStreamParser.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>

namespace vantrel {

void PrintTo(const HunkExplanationStreamEvent &event, std::ostream *out)
{
    if (const auto *const delta = std::get_if<ProseDelta>(&event)) {
        *out << "prose \"" << qPrintable(delta->text) << "\"";
    } else if (const auto *const completed = std::get_if<ExplanationCompleted>(&event)) {
        const HunkExplanation &explanation = completed->explanation;
        *out << "completed [" << qPrintable(explanation.tag) << "] \""
             << qPrintable(explanation.explanation) << "\" ("
             << qPrintable(explanation.points.join(u'|')) << ") ("
             << qPrintable(explanation.suggestedQuestions.join(u'|')) << ")";
    } else {
        *out << "prose finished";
    }
}

namespace {

using namespace Qt::Literals::StringLiterals;

using Events = QList<HunkExplanationStreamEvent>;

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

/// The record of a reply that arrives in one delta.
HunkExplanation recordOf(const QString &reply)
{
    HunkExplanationStreamParser parser;
    const Events fed = parser.feed(reply);
    const Events closing = parser.finish();
    return std::get<ExplanationCompleted>(closing.last()).explanation;
}

TEST(HunkExplanationStreamParser, HoldsBackWhatMayBecomeTheDelimiter)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"Adds retry --"_s), Events{ProseDelta{u"Adds retry "_s}});
    EXPECT_EQ(parser.feed(u"-MET"_s), Events{});
    EXPECT_EQ(parser.feed(u"A---\n{\"tag\":\"Bug fix\",\"points\":[\"p\"]}"_s),
              Events{ProseFinished{}});
    EXPECT_EQ(parser.finish(),
              Events{ExplanationCompleted{explanation(u"Bug fix"_s, u"Adds retry"_s, {u"p"_s})}});
}

TEST(HunkExplanationStreamParser, AWholeReplyInOneDeltaYieldsProseThenItsEnd)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"Text.\n---META---\n{\"tag\":\"T\"}"_s),
              (Events{ProseDelta{u"Text.\n"_s}, ProseFinished{}}));
    EXPECT_EQ(parser.finish(), Events{ExplanationCompleted{explanation(u"T"_s, u"Text."_s)}});
}

TEST(HunkExplanationStreamParser, HyphensAtTheEndAreProse)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"The end ---"_s), Events{ProseDelta{u"The end "_s}});
    EXPECT_EQ(parser.finish(),
              (Events{ProseDelta{u"---"_s}, ProseFinished{},
                      ExplanationCompleted{explanation(u"Change"_s, u"The end ---"_s)}}));
}

TEST(HunkExplanationStreamParser, NothingIsYieldedBehindTheDelimiter)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"a---META---"_s), (Events{ProseDelta{u"a"_s}, ProseFinished{}}));
    EXPECT_EQ(parser.feed(u"{\"tag\":"_s), Events{});
    EXPECT_EQ(parser.feed(u"\"T\"}---META---"_s), Events{});
    EXPECT_EQ(parser.finish(), Events{ExplanationCompleted{explanation(u"T"_s, u"a"_s)}});
}

TEST(HunkExplanationStreamParser, HeldHyphensAreShownOnceTheyAreNone)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"a---META--"_s), Events{ProseDelta{u"a"_s}});
    EXPECT_EQ(parser.feed(u"+"_s), Events{ProseDelta{u"---META--+"_s}});
}

TEST(HunkExplanationStreamParser, HoldsTheLongestBeginningOnly)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"-----"_s), Events{ProseDelta{u"--"_s}});
    EXPECT_EQ(parser.feed(u"META---{}"_s), Events{ProseFinished{}});
    EXPECT_EQ(parser.finish(), Events{ExplanationCompleted{explanation(u"Change"_s, u"--"_s)}});
}

TEST(HunkExplanationStreamParser, TheDelimiterIsCaseSensitive)
{
    EXPECT_EQ(recordOf(u"a ---meta--- {}"_s), explanation(u"Change"_s, u"a ---meta--- {}"_s));
}

TEST(HunkExplanationStreamParser, ADelimiterWithAnAccentIsProse)
{
    const QString reply = u"a ---META---\u0301 b"_s;

    EXPECT_EQ(recordOf(reply), explanation(u"Change"_s, reply));
}

TEST(HunkExplanationStreamParser, ADelimiterWithAnAccentBeyondTheBasicPlaneIsProse)
{
    const QString reply = u"a ---META---\U0001D167 b"_s;

    EXPECT_EQ(recordOf(reply), explanation(u"Change"_s, reply));
}

TEST(HunkExplanationStreamParser, TheFirstDelimiterBehindAnAccentedOneCounts)
{
    EXPECT_EQ(recordOf(u"a---META---\u0301---META---{\"tag\":\"T\"}"_s),
              explanation(u"T"_s, u"a---META---\u0301"_s));
}

TEST(HunkExplanationStreamParser, ADelimiterThatAPrependedMarkBeginsIsProse)
{
    const QString reply = u"a \u0600---META--- b"_s;

    EXPECT_EQ(recordOf(reply), explanation(u"Change"_s, reply));
}

TEST(HunkExplanationStreamParser, AHyphenThatAPrependedMarkBeginsIsNotHeld)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"a \u0600-"_s), Events{ProseDelta{u"a \u0600-"_s}});
    EXPECT_EQ(parser.feed(u"--META--- b"_s), Events{ProseDelta{u"--META--- b"_s}});
}

TEST(HunkExplanationStreamParser, AHyphenWithAnAccentIsNotHeld)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"a --\u0301"_s), Events{ProseDelta{u"a --\u0301"_s}});
}

TEST(HunkExplanationStreamParser, AnAccentThatArrivesLaterMakesTheHeldHyphenProse)
{
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(u"a --"_s), Events{ProseDelta{u"a "_s}});
    EXPECT_EQ(parser.feed(u"\u0301b"_s), Events{ProseDelta{u"--\u0301b"_s}});
}

TEST(HunkExplanationStreamParser, ADeltaIsNeverSplitWithinACharacter)
{
    const QString family = u"👨‍👩‍👧"_s;
    HunkExplanationStreamParser parser;

    EXPECT_EQ(parser.feed(family + u"-"_s), Events{ProseDelta{family}});
    EXPECT_EQ(parser.feed(family), Events{ProseDelta{u"-"_s + family}});
}

TEST(HunkExplanationStreamParser, HalvesOfACharacterComeOutWhole)
{
    HunkExplanationStreamParser parser;
    const QString face = u"😀"_s;

    const Events first = parser.feed(u"a"_s + face.first(1));
    const Events second = parser.feed(face.last(1) + u"b"_s);

    const QString prose =
        std::get<ProseDelta>(first.first()).text + std::get<ProseDelta>(second.first()).text;
    EXPECT_EQ(prose, u"a😀b"_s);
}

TEST(HunkExplanationStreamParser, KnowsWhetherTextHasArrived)
{
    HunkExplanationStreamParser parser;
    EXPECT_FALSE(parser.hasReceivedContent());

    const Events events = parser.feed(u"-"_s);

    EXPECT_EQ(events, Events{});
    EXPECT_TRUE(parser.hasReceivedContent());
}

/// What a screen sees of a reply that comes in these deltas.
struct Seen
{
    QString prose{};
    QStringList order{}; ///< Of the kinds of event, repeated prose once.
    HunkExplanation record{};

    bool operator==(const Seen &) const = default;
};

void PrintTo(const Seen &seen, std::ostream *out)
{
    *out << qPrintable(seen.order.join(u' ')) << ": \"" << qPrintable(seen.prose) << "\", ";
    PrintTo(HunkExplanationStreamEvent(ExplanationCompleted{seen.record}), out);
}

void add(Seen &seen, const Events &events)
{
    for (const HunkExplanationStreamEvent &event : events) {
        QString kind = u"finished"_s;
        if (const auto *const delta = std::get_if<ProseDelta>(&event)) {
            EXPECT_FALSE(delta->text.isEmpty());
            seen.prose += delta->text;
            kind = u"prose"_s;
        } else if (const auto *const completed = std::get_if<ExplanationCompleted>(&event)) {
            seen.record = completed->explanation;
            kind = u"completed"_s;
        }
        if (seen.order.isEmpty() || seen.order.last() != kind || kind != u"prose"_s) {
            seen.order.append(kind);
        }
    }
}

Seen seen(const QStringList &deltas)
{
    HunkExplanationStreamParser parser;
    Seen result;
    for (const QString &delta : deltas) {
        if (!delta.isEmpty()) {
            add(result, parser.feed(delta));
        }
    }
    add(result, parser.finish());
    return result;
}

class CutTest : public testing::TestWithParam<QString>
{
protected:
    /// What must be seen however the reply is cut, by the plainest reading of it.
    [[nodiscard]] static Seen expected(const QString &reply)
    {
        const qsizetype delimiter = reply.indexOf(u"---META---"_s);
        Seen result;
        result.prose = delimiter < 0 ? reply : reply.first(delimiter);
        result.order = QStringList{u"finished"_s, u"completed"_s};
        if (!result.prose.isEmpty()) {
            result.order.prepend(u"prose"_s);
        }
        result.record = recordOf(reply);
        return result;
    }
};

TEST_P(CutTest, IsTheSameWithOneCutAnywhere)
{
    const QString reply = GetParam();

    for (qsizetype cut = 0; cut <= reply.size(); ++cut) {
        EXPECT_EQ(seen({reply.first(cut), reply.sliced(cut)}), expected(reply)) << "cut at " << cut;
    }
}

TEST_P(CutTest, IsTheSameInSingleCodeUnits)
{
    QStringList units;
    for (const QChar unit : GetParam()) {
        units.append(QString(unit));
    }

    EXPECT_EQ(seen(units), expected(GetParam()));
}

TEST_P(CutTest, IsTheSameInRandomPieces)
{
    const QString reply = GetParam();
    std::mt19937 random(11);
    std::uniform_int_distribution<qsizetype> length(1, 12);

    for (int run = 0; run < 300; ++run) {
        QStringList pieces;
        for (qsizetype position = 0; position < reply.size();) {
            pieces.append(reply.mid(position, length(random)));
            position += pieces.last().size();
        }
        EXPECT_EQ(seen(pieces), expected(reply));
    }
}

INSTANTIATE_TEST_SUITE_P(
    HunkExplanationStreamParser, CutTest,
    testing::Values(
        u"Adds a retry.\n---META---\n{\"tag\":\"Bug fix\",\"points\":[\"p\"]}"_s,
        u"---META---{\"explanation\":\"e\"}"_s, u"---META---"_s, u"-----META-----META---{}"_s,
        u"---MET---META---META---"_s, u"------METAMETA---"_s, u"a\r\n---\r\n--META--\r\n"_s,
        u"---\n---\n---"_s, u"--"_s,
        u"é e\u0301 👨‍👩‍👧 🇩🇪🇫🇷 -- 한 각---META---\n{\"tag\":\"é\"}"_s,
        u"accented --\u0301 and -\u0308-- hyphens---META---{}"_s,
        u"{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}"_s,
        u"```json\n{\"tag\":\"T\",\"explanation\":\"e\",\"points\":[]}\n```"_s));

} // namespace
} // namespace vantrel
