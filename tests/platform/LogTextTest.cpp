#include "platform/log/LogText.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QByteArray lineOf(const QByteArray &category, const QString &message)
{
    return logLine(LogEntry{QtInfoMsg, category, logText(message)});
}

TEST(LogText, AnOrdinarySentenceStaysAsItIs)
{
    const QString sentence = u"Größe \"5 €\", 漢字, 😀 and C:\\new"_s;

    EXPECT_EQ(logText(sentence), sentence);
}

TEST(LogText, LineFeedsAndTabsAreWrittenOut)
{
    EXPECT_EQ(logText(u"one\ntwo\r\n\tthree"_s), u"one\\ntwo\\u{d}\\n\\tthree"_s);
}

TEST(LogText, LineFeedsAtTheEndAreLeftOut)
{
    EXPECT_EQ(logText(u"one\n\ntwo\n\n"_s), u"one\\n\\ntwo"_s);
    EXPECT_EQ(logText(u"\n"_s), QString());
}

TEST(LogText, WhatSteersATerminalIsWrittenOut)
{
    const QString clearing = u"\x1b[2J and \u009b2J, \x07, \x7f"_s;

    EXPECT_EQ(logText(clearing), u"\\u{1b}[2J and \\u{9b}2J, \\u{7}, \\u{7f}"_s);
}

TEST(LogText, WhatEndsALineOrTurnsItsDirectionIsWrittenOut)
{
    EXPECT_EQ(logText(u"a\u2028b\u2029c\u202ed"_s), u"a\\u{2028}b\\u{2029}c\\u{202e}d"_s);
    EXPECT_EQ(logText(QString::fromUcs4(U"tag \U000e0041", 5)), u"tag \\u{e0041}"_s);
}

TEST(LogText, ANullIsWrittenOutAndWhatFollowsIsKept)
{
    EXPECT_EQ(logText(u"before\0after"_s), u"before\\u{0}after"_s);
}

TEST(LogText, HalvesOfSurrogatePairsAreWrittenOut)
{
    const QString halves = QString(QChar(0xd83d)) + u'x' + QChar(0xde00) + QChar(0xd83d);

    EXPECT_EQ(logText(halves), u"\\u{d83d}x\\u{de00}\\u{d83d}"_s);
}

TEST(LogText, AHugeMessageIsCut)
{
    EXPECT_EQ(logText(QString(4'096, u'x')), QString(4'096, u'x'));
    EXPECT_EQ(logText(QString(5'000, u'x')), QString(4'096, u'x') + u"… (904 more characters)"_s);
}

TEST(LogText, TheCutPartsNoPair)
{
    const QString text = QString(4'095, u'x') + u"😀"_s;

    EXPECT_EQ(logText(text), QString(4'095, u'x') + u"… (2 more characters)"_s);
}

TEST(LogLine, NamesTheCategoryWithoutTheSubsystem)
{
    EXPECT_EQ(lineOf("com.orbisk.app.SuggestedQuestions", u"kept"_s),
              "vantrel: SuggestedQuestions: kept\n");
}

TEST(LogLine, NamesTheWholeCategoryOfAnother)
{
    EXPECT_EQ(lineOf("qt.qpa.xcb", u"no"_s), "vantrel: qt.qpa.xcb: no\n");
    EXPECT_EQ(lineOf("com.orbisk.apple", u"no"_s), "vantrel: com.orbisk.apple: no\n");
}

TEST(LogLine, LeavesOutTheCategoryThatTellsNothing)
{
    EXPECT_EQ(lineOf("default", u"a word"_s), "vantrel: a word\n");
    EXPECT_EQ(lineOf(QByteArray(), u"a word"_s), "vantrel: a word\n");
}

} // namespace
} // namespace vantrel::test
