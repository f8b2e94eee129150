// Requests of a process without descriptors, and connections that are never made.

#include "platform/http/NetworkHttpLoader.h"
#include "platform/jobs/RunQueue.h"
#include "platform_http/HttpExchange.h"
#include "support/FewDescriptors.h"
#include "support/ManualClock.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QTcpServer>

#include <chrono>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class NetworkHttpLoaderFaults : public testing::Test
{
protected:
    [[nodiscard]] static HttpRequest requestTo(const QUrl &url)
    {
        HttpRequest request;
        request.url = url;
        return request;
    }

    [[nodiscard]] ExchangeResult load(const QUrl &url)
    {
        HttpExchange exchange(m_loader, requestTo(url));
        return exchange.waitForEnd();
    }

    ScriptedServer m_server{};
    ManualClock m_clock{};
    NetworkHttpLoader m_loader{m_clock};
};

TEST_F(NetworkHttpLoaderFaults, WithoutDescriptorsFailsInTheSystemsWordsAndWorksOnceThereAreSome)
{
    for (int left = 0; left < 8; ++left) {
        const FewDescriptors few(left);
        const ExchangeResult result = load(m_server.url(u"/v1/models"_s));

        ASSERT_TRUE(result.error) << left;
        EXPECT_EQ(result.error->message, u"Too many open files"_s);
    }
    m_server.answer(ServerScript().send(httpAnswer(200, "{}")));

    EXPECT_EQ(load(m_server.url(u"/v1/models"_s)).body, "{}");
}

/// A port whose queue of connections is full, so that the system drops every further one
/// unanswered, as a network that is cut does.
class SilentPort
{
public:
    SilentPort()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto *const generic = reinterpret_cast<sockaddr *>(&address);
        EXPECT_EQ(::bind(m_listener, generic, size), 0);
        EXPECT_EQ(::listen(m_listener, 0), 0);
        EXPECT_EQ(::getsockname(m_listener, generic, &size), 0);
        m_port = ntohs(address.sin_port);
        for (int waiting = 0; waiting < 4; ++waiting) {
            m_waiting.push_back(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
            ::connect(m_waiting.back(), generic, size);
        }
    }
    SilentPort(const SilentPort &) = delete;
    SilentPort &operator=(const SilentPort &) = delete;
    ~SilentPort()
    {
        for (const int descriptor : m_waiting) {
            ::close(descriptor);
        }
        ::close(m_listener);
    }

    [[nodiscard]] QUrl url() const { return QUrl(u"http://127.0.0.1:%1/v1/models"_s.arg(m_port)); }

private:
    int m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    quint16 m_port = 0;
    std::vector<int> m_waiting{};
};

TEST_F(NetworkHttpLoaderFaults, AConnectionThatIsNeverMadeTimesOut)
{
    const SilentPort silent;
    HttpExchange exchange(m_loader, requestTo(silent.url()));
    // Whatever was under way between the two threads has arrived once this answer has.
    m_server.answer(ServerScript().send(httpAnswer(200, "")));
    ASSERT_TRUE(load(m_server.url(u"/"_s)).isOver);

    m_clock.advance(59'999ms);
    RunQueue::interfaceThread().runUntilIdle();
    EXPECT_FALSE(exchange.result().isOver);
    m_clock.advance(1ms);
    const ExchangeResult &result = exchange.waitForEnd();

    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->message, u"The request timed out."_s);
    EXPECT_EQ(result.status, std::nullopt);
}

} // namespace
} // namespace vantrel::test
