#include "HttpRequestParser.h"

#include <gtest/gtest.h>

namespace vantrel::sample {
namespace {

using Outcome = HttpRequestParser::Outcome;

const QByteArray post = "POST /v1/chat/completions HTTP/1.1\r\nHost: x\r\n"
                        "Authorization: Bearer k\r\nContent-Length: 4\r\n\r\nbody";

TEST(HttpRequestParser, TakesARequestHoweverItIsSplit)
{
    const ReceivedRequest expected{"POST", "/v1/chat/completions", true, "body"};
    for (qsizetype cut = 0; cut <= post.size(); ++cut) {
        HttpRequestParser parser;
        ReceivedRequest request;
        parser.feed(post.first(cut));
        if (cut < post.size()) {
            EXPECT_EQ(parser.next(request), Outcome::incomplete) << cut;
        }
        parser.feed(post.sliced(cut));

        EXPECT_EQ(parser.next(request), Outcome::complete) << cut;
        EXPECT_EQ(request, expected) << cut;
        EXPECT_EQ(parser.next(request), Outcome::incomplete) << cut;
    }
}

TEST(HttpRequestParser, TakesTwoRequestsOfOneConnection)
{
    HttpRequestParser parser;
    ReceivedRequest request;
    parser.feed("GET /v1/models HTTP/1.1\r\n\r\n" + post);

    EXPECT_EQ(parser.next(request), Outcome::complete);
    EXPECT_EQ(request, (ReceivedRequest{"GET", "/v1/models", false, {}}));
    EXPECT_EQ(parser.next(request), Outcome::complete);
    EXPECT_EQ(request.body, "body");
}

TEST(HttpRequestParser, RefusesWhatIsNoRequest)
{
    for (const char *const bytes : {"garbage\r\n\r\n", "GET /\r\n\r\n", "GET / SMTP/1.1\r\n\r\n",
                                    "POST / HTTP/1.1\r\nContent-Length: x\r\n\r\n",
                                    "POST / HTTP/1.1\r\nContent-Length: -1\r\n\r\n",
                                    "POST / HTTP/1.1\r\nContent-Length: 99999999999\r\n\r\n"}) {
        HttpRequestParser parser;
        ReceivedRequest request;
        parser.feed(bytes);

        EXPECT_EQ(parser.next(request), Outcome::invalid) << bytes;
    }
}

TEST(HttpRequestParser, RefusesAHeadWithoutEnd)
{
    HttpRequestParser parser;
    ReceivedRequest request;
    parser.feed(QByteArray(100'000, 'x'));

    EXPECT_EQ(parser.next(request), Outcome::invalid);
}

} // namespace
} // namespace vantrel::sample
