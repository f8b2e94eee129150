#include "updates/UpdateFeed.h"

#include "support/Running.h"
#include "support/Spin.h"
#include "updates/UpdatesFixture.h"

#include <chrono>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Case = SoftwareUpdateError::Case;
using Outcome = Result<std::optional<AppcastItem>, SoftwareUpdateError>;

const UpdateVersion running{{0, 1}};

class UpdateFeedTest : public UpdatesTest
{
protected:
    [[nodiscard]] Running<Outcome> begin() { return begin(feedURL()); }
    [[nodiscard]] Running<Outcome> begin(const QUrl &url)
    {
        return Running<Outcome>(newestUpdate(&session, maker.configuration(url), running));
    }

    /// What comes of a check, once it is over.
    [[nodiscard]] static Outcome outcomeOf(const Running<Outcome> &checking)
    {
        spinUntil([&] { return checking.isOver(); });
        return checking.value().value_or(Outcome());
    }
    [[nodiscard]] static SoftwareUpdateError errorOf(const Running<Outcome> &checking)
    {
        const Outcome outcome = outcomeOf(checking);
        EXPECT_FALSE(outcome);
        return outcome ? SoftwareUpdateError() : outcome.error();
    }

    [[nodiscard]] Outcome check() { return outcomeOf(begin()); }
    [[nodiscard]] SoftwareUpdateError checkError() { return errorOf(begin()); }
};

TEST_F(UpdateFeedTest, OffersANewerVersion)
{
    answer(signedFeed({sampleItem(u"0.1.1"_s)}));

    const Outcome outcome = check();

    ASSERT_TRUE(outcome && *outcome);
    EXPECT_EQ((*outcome)->version.text(), u"0.1.1"_s);
    EXPECT_EQ((*outcome)->packageURL, server.url(u"/vantrel.deb"_s));
}

TEST_F(UpdateFeedTest, OffersTheNewestOfAllWhereverItStands)
{
    answer(signedFeed({sampleItem(u"0.1.9"_s), sampleItem(u"0.1.10"_s), sampleItem(u"0.1.2"_s)}));

    const Outcome outcome = check();

    ASSERT_TRUE(outcome && *outcome);
    EXPECT_EQ((*outcome)->version.text(), u"0.1.10"_s);
}

TEST_F(UpdateFeedTest, OffersNothingToTheNewest)
{
    answer(signedFeed({sampleItem(u"0.1.0"_s), sampleItem(u"0.0.9"_s)}));

    EXPECT_EQ(check(), Outcome(std::nullopt));
}

TEST_F(UpdateFeedTest, NeverGoesDown)
{
    answer(signedFeed({sampleItem(u"0.0.9"_s), sampleItem(u"0.0.8"_s)}));

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::feedDowngraded, u"0.0.9"_s, 0}));
}

TEST_F(UpdateFeedTest, WithoutAPackageForThisSystemSaysSo)
{
    SampleItem mac = sampleItem();
    mac.system.clear();
    answer(signedFeed({mac}));

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::feedWithoutPackage, {}, 0}));
}

TEST_F(UpdateFeedTest, ThatIsNotSignedIsIgnored)
{
    answer(maker.feed({sampleItem()}));

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::feedNotSigned, {}, 0}));
}

TEST_F(UpdateFeedTest, OfSomebodyElseIsIgnored)
{
    const UpdateMaker somebodyElse;
    answer(somebodyElse.signedFeed(somebodyElse.feed({sampleItem()})));

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::feedNotSigned, {}, 0}));
}

TEST_F(UpdateFeedTest, ThatIsMalformedSaysSo)
{
    answer(maker.signedFeed("<rss><channel>"));

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::feedMalformed, {}, 0}));
}

TEST_F(UpdateFeedTest, ThatIsTooLargeIsNotReadToItsEnd)
{
    server.answer(
        ServerScript().send(httpHead(200)).sendRepeatedly(QByteArray(1 << 16, ' '), 1'000));

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::feedTooLarge, {}, 0}));
    spinUntil([this] { return server.openConnectionCount() == 0; });
    EXPECT_LT(server.sentBytes(), 30 << 20);
}

TEST_F(UpdateFeedTest, MayBeAsLargeAsIsAllowed)
{
    SampleItem item = sampleItem();
    item.notes = QString(1 << 19, u'n');
    answer(signedFeed({item}));

    const Outcome outcome = check();

    ASSERT_TRUE(outcome && *outcome);
    EXPECT_EQ((*outcome)->notes, item.notes);
}

TEST_F(UpdateFeedTest, ThatIsMissingSaysSo)
{
    for (const int status : {404, 500, 204, 403}) {
        server.answer(ServerScript().send(httpAnswer(status, {})));
        EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::refused, {}, status}));
    }
}

TEST_F(UpdateFeedTest, IsFollowedToAnotherAddress)
{
    for (const int status : {301, 302, 303, 307, 308}) {
        redirect("/elsewhere.xml", status);
        answer(signedFeed({sampleItem()}));

        const Outcome outcome = check();

        EXPECT_TRUE(outcome && *outcome) << status;
    }
    EXPECT_EQ(askedFor().first(2), (QList<QByteArray>{"/appcast.xml", "/elsewhere.xml"}));
}

TEST_F(UpdateFeedTest, IsNotFollowedToHttp)
{
    ScriptedServer insecure;
    redirect(insecure.url(u"/appcast.xml"_s).toEncoded());

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::insecureRedirect, {}, 0}));
    EXPECT_EQ(insecure.connectionCount(), 0u);
}

TEST_F(UpdateFeedTest, IsNotFollowedToAFile)
{
    redirect("file:///etc/hostname");

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::insecureRedirect, {}, 0}));
}

TEST_F(UpdateFeedTest, IsNotFollowedForEver)
{
    for (int redirects = 0; redirects < 6; ++redirects) {
        redirect("/appcast.xml");
    }

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::tooManyRedirects, {}, 0}));
    EXPECT_EQ(server.requests().size(), 6);
}

TEST_F(UpdateFeedTest, WithARedirectToNowhereSaysSo)
{
    server.answer(ServerScript().send(httpAnswer(302, {})));

    EXPECT_EQ(checkError(), (SoftwareUpdateError{Case::refused, {}, 302}));
}

TEST_F(UpdateFeedTest, ThatBreaksOffIsNotUsed)
{
    const QByteArray feed = signedFeed({sampleItem()});
    server.answer(ServerScript().send(httpAnswer(200, feed).chopped(1)).reset());

    EXPECT_EQ(checkError().kind, Case::unreachable);
}

TEST_F(UpdateFeedTest, OfASilentServerTimesOut)
{
    server.answer(ServerScript().send(httpHead(200)).hold());
    const Running<Outcome> checking = begin();
    spinUntil([this] { return server.holdingCount() == 1 && clock.sleeperCount() == 1; });

    clock.advance(60s);

    EXPECT_EQ(errorOf(checking),
              (SoftwareUpdateError{Case::unreachable, u"The request timed out."_s, 0}));
}

TEST_F(UpdateFeedTest, OfACertificateThatNobodyVouchesForIsNotRead)
{
    const TestCertificate strange;
    ScriptedServer impostor(strange.serverConfiguration());

    const SoftwareUpdateError error = errorOf(begin(impostor.url(u"/appcast.xml"_s)));

    EXPECT_EQ(error.kind, Case::unreachable);
    EXPECT_EQ(impostor.requests().size(), 0);
}

TEST_F(UpdateFeedTest, IsNotAskedForInTheClear)
{
    ScriptedServer insecure;

    const SoftwareUpdateError error = errorOf(begin(insecure.url(u"/appcast.xml"_s)));

    EXPECT_EQ(error, (SoftwareUpdateError{Case::insecureRedirect, {}, 0}));
    EXPECT_EQ(insecure.connectionCount(), 0u);
}

TEST_F(UpdateFeedTest, TellsNothingOfThePerson)
{
    answer(signedFeed({sampleItem()}));

    EXPECT_TRUE(check());

    QList<QByteArray> names;
    for (const auto &[name, value] : server.requests().first().headers) {
        names.append(name);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (QList<QByteArray>{"accept-encoding", "accept-language", "connection",
                                        "content-length", "host", "user-agent"}));
    EXPECT_EQ(server.requests().first().header("accept-language"), "*");
    EXPECT_EQ(server.requests().first().body, QByteArray());
}

TEST_F(UpdateFeedTest, ThatNobodyWaitsForIsLeft)
{
    server.answer(ServerScript().send(httpHead(200)).hold());
    Running<Outcome> checking = begin();
    spinUntil([this] { return server.holdingCount() == 1; });

    checking.cancel();
    spinUntil([this] { return server.openConnectionCount() == 0; });

    EXPECT_FALSE(checking.isOver());
}

} // namespace
} // namespace vantrel::test
