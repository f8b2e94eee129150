#include "ai/SseDeltaDecoder.h"

#include <gtest/gtest.h>

#include <random>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

QByteArray chunk(const QByteArray &content)
{
    return R"({"choices":[{"delta":{"content":")" + content + R"("}}]})";
}

QByteArray dataLine(const QByteArray &content)
{
    return "data: " + chunk(content) + "\n";
}

QStringList decode(const QList<QByteArray> &blocks)
{
    SseDeltaDecoder decoder;
    QStringList deltas;
    for (const QByteArray &block : blocks) {
        deltas.append(decoder.feed(block));
    }
    return deltas + decoder.finish();
}

const QByteArray sampleStream =
    ": keep-alive\r\n\r\n"
    "event: message\n"
    "data:{\"choices\":[{\"delta\":{\"content\":\"Adds \"}}]}\r\n\r\n"
    "data: {\"choices\":[]}\n\n"
    "data: {\"choices\":[{\"delta\":{\"role\":\"assistant\"}}]}\n\n"
    "data: {broken\n\n"
    "data: \t{\"choices\":[{\"delta\":{\"content\":\"\xc3\xa4\xf0\x9f\x98"
    "\x80\"}}]} \t\n\n"
    " data: {\"choices\":[{\"delta\":{\"content\":\"indented\"}}]}\n"
    "data: {\"choices\":[{\"delta\":{\"content\":\"\"}}]}\n"
    "\n"
    "data: {\"choices\":[{\"delta\":{\"content\":\"retry\\n\"}}]}\n"
    "data: [DONE] \t\r\n"
    "data: {\"choices\":[{\"delta\":{\"content\":\"too late\"}}]}\n";
const QStringList sampleDeltas{u"Adds "_s, u"ä😀"_s, u"retry\n"_s};

TEST(SseDeltaDecoder, ReadsTheDeltasOfAStream)
{
    EXPECT_EQ(decode({sampleStream}), sampleDeltas);
}

TEST(SseDeltaDecoder, ADeltaThatBeginsWithAByteOrderMarkKeepsIt)
{
    EXPECT_EQ(decode({dataLine("\xef\xbb\xbf"), dataLine("\xef\xbb\xbfint")}),
              (QStringList{u"\uFEFF"_s, u"\uFEFFint"_s}));
}

TEST(SseDeltaDecoder, GivesTheSameWhereverTheStreamIsCut)
{
    for (qsizetype cut = 0; cut <= sampleStream.size(); ++cut) {
        EXPECT_EQ(decode({sampleStream.first(cut), sampleStream.sliced(cut)}), sampleDeltas)
            << "cut at " << cut;
    }
}

TEST(SseDeltaDecoder, GivesTheSameByteByByte)
{
    QList<QByteArray> bytes;
    for (const char byte : sampleStream) {
        bytes.append(QByteArray(1, byte));
    }

    EXPECT_EQ(decode(bytes), sampleDeltas);
}

TEST(SseDeltaDecoder, GivesTheSameInRandomPieces)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<qsizetype> length(0, 40);

    for (int run = 0; run < 500; ++run) {
        QList<QByteArray> pieces;
        for (qsizetype position = 0; position < sampleStream.size();) {
            pieces.append(sampleStream.mid(position, length(random)));
            position += pieces.last().size();
        }
        EXPECT_EQ(decode(pieces), sampleDeltas);
    }
}

TEST(SseDeltaDecoder, GivesADeltaAsSoonAsItsLineEnds)
{
    SseDeltaDecoder decoder;
    const QByteArray line = dataLine("a");

    EXPECT_EQ(decoder.feed(QByteArrayView(line).chopped(1)), QStringList());
    EXPECT_EQ(decoder.feed("\n"), QStringList{u"a"_s});
}

TEST(SseDeltaDecoder, ReadsALastLineWithoutALineFeed)
{
    EXPECT_EQ(decode({dataLine("a").chopped(1)}), QStringList{u"a"_s});
}

TEST(SseDeltaDecoder, IsDoneAtTheEndMarkOnly)
{
    SseDeltaDecoder decoder;

    EXPECT_EQ(decoder.feed(dataLine("a") + "data: [DONE]x\ndata: [done]\n[DONE]\n"),
              QStringList{u"a"_s});
    EXPECT_FALSE(decoder.isDone());
    EXPECT_EQ(decoder.feed("data:[DONE]   \n" + dataLine("b")), QStringList());
    EXPECT_TRUE(decoder.isDone());
    EXPECT_EQ(decoder.feed(dataLine("c")) + decoder.finish(), QStringList());
}

TEST(SseDeltaDecoder, ACarriageReturnAloneEndsNoLine)
{
    EXPECT_EQ(decode({"data: " + chunk("a") + "\rdata: " + chunk("b") + "\n"}), QStringList());
}

TEST(SseDeltaDecoder, OnlyBlanksAndTabsAreTrimmed)
{
    EXPECT_EQ(decode({"data:\v[DONE]\n" + dataLine("a")}), QStringList{u"a"_s});
}

TEST(SseDeltaDecoder, InvalidTextIsPassedOver)
{
    EXPECT_EQ(decode({dataLine("\xff\xfe") + dataLine("\xed\xa0\x80") + dataLine("a")}),
              QStringList{u"a"_s});
}

TEST(SseDeltaDecoder, ALineOfTheGreatestLengthIsRead)
{
    const qsizetype overhead = dataLine("").size() - 1;
    const QByteArray content(SseDeltaDecoder::maxLineBytes - overhead, 'x');
    const QStringList expected{QString::fromLatin1(content), u"a"_s};
    const QByteArray stream = dataLine(content) + dataLine("a");

    EXPECT_EQ(decode({stream}), expected);
    EXPECT_EQ(decode({stream.first(1000), stream.sliced(1000)}), expected);
}

TEST(SseDeltaDecoder, ALongerLineIsPassedOverHoweverItArrives)
{
    const qsizetype overhead = dataLine("").size() - 1;
    const QByteArray content(SseDeltaDecoder::maxLineBytes - overhead + 1, 'x');
    const QStringList expected{u"a"_s};
    const QByteArray stream = dataLine(content) + dataLine("a");
    const qsizetype lineEnd = stream.indexOf('\n');

    EXPECT_EQ(decode({stream}), expected);
    EXPECT_EQ(decode({stream.first(1000), stream.sliced(1000)}), expected);
    EXPECT_EQ(decode({stream.first(lineEnd), stream.sliced(lineEnd)}), expected);
}

TEST(SseDeltaDecoder, ALongLineWithoutAnEndIsPassedOver)
{
    const QByteArray block(SseDeltaDecoder::maxLineBytes / 2 + 1, 'x');

    EXPECT_EQ(decode({"data: ", block, block}), QStringList());
}

} // namespace
} // namespace vantrel
