#include "updates/SignedFeed.h"

#include "support/UpdateMaker.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

const QByteArray content = "<rss><channel/></rss>\n";

class SignedFeedTest : public testing::Test
{
protected:
    [[nodiscard]] std::optional<QByteArray> verified(const QByteArray &feed) const
    {
        return verifiedFeedContent(feed, maker.publicKey());
    }

    [[nodiscard]] static QByteArray comment(const QByteArray &edSignature, const QByteArray &count)
    {
        return "<!-- sparkle-signatures:\nedSignature: " + edSignature + "\nlength: " + count +
               "\n-->\n";
    }

    UpdateMaker maker;
    QByteArray signature = maker.signature(content).toBase64();
    QByteArray length = QByteArray::number(content.size());
};

TEST_F(SignedFeedTest, IsItsContent)
{
    EXPECT_EQ(verified(maker.signedFeed(content)), content);
}

TEST_F(SignedFeedTest, MayHaveItsLinesInAnyOrderAndWithCarriageReturns)
{
    const QByteArray feed = content + "<!-- sparkle-signatures:\r\nlength: " + length +
                            "\r\nedSignature: " + signature + "\r\n-->";

    EXPECT_EQ(verified(feed), content);
}

TEST_F(SignedFeedTest, WithoutASignatureIsNone)
{
    EXPECT_EQ(verified(content), std::nullopt);
    EXPECT_EQ(verified({}), std::nullopt);
    EXPECT_EQ(verified(content + "<!-- sparkle-signatures:\n-->\n"), std::nullopt);
    EXPECT_EQ(verified(content + "<!-- sparkle-signatures:\nedSignature: " + signature + "\n-->"),
              std::nullopt);
}

TEST_F(SignedFeedTest, OfSomebodyElseIsNone)
{
    const UpdateMaker somebodyElse;

    EXPECT_EQ(verified(somebodyElse.signedFeed(content)), std::nullopt);
}

TEST_F(SignedFeedTest, ThatWasChangedIsNone)
{
    QByteArray feed = maker.signedFeed(content);
    feed[5] = 'X';

    EXPECT_EQ(verified(feed), std::nullopt);
}

TEST_F(SignedFeedTest, WithMoreThanWasSignedIsNone)
{
    const QByteArray longer = content + "<item/>" + comment(signature, length);

    EXPECT_EQ(verified(longer), std::nullopt);
}

TEST_F(SignedFeedTest, WithAnythingBehindItsSignatureIsNone)
{
    EXPECT_EQ(verified(maker.signedFeed(content) + "<rss/>"), std::nullopt);
    EXPECT_EQ(verified(maker.signedFeed(content) + "<rss/><!-- end -->"), std::nullopt);
}

TEST_F(SignedFeedTest, TakesTheLastSignatureAlone)
{
    const UpdateMaker somebodyElse;
    const QByteArray twice = somebodyElse.signedFeed(maker.signedFeed(content));

    EXPECT_EQ(verified(twice), std::nullopt);
    EXPECT_EQ(verified(maker.signedFeed(somebodyElse.signedFeed(content))),
              somebodyElse.signedFeed(content));
}

TEST_F(SignedFeedTest, WithAMalformedSignatureIsNone)
{
    for (const QByteArray &malformed :
         {QByteArray("AAAA"), QByteArray(signature).replace(0, 1, "!"), signature.chopped(1)}) {
        EXPECT_EQ(verified(content + comment(malformed, length)), std::nullopt)
            << malformed.constData();
    }
    EXPECT_EQ(verified(content + comment(signature, "many")), std::nullopt);
    EXPECT_EQ(verified(content + comment(signature, "-1")), std::nullopt);
    EXPECT_EQ(verified(content + comment(signature, "99999999999999999999")), std::nullopt);
}

} // namespace
} // namespace vantrel::test
