#include "views/DenyingNetworkAccess.h"

#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTcpServer>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(DenyingNetworkAccess, AsksNobodyAndFailsEveryRequest)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const std::unique_ptr<QNetworkAccessManager> manager(DenyingNetworkAccess().create(nullptr));
    const QUrl url(u"http://127.0.0.1:%1/a.png"_s.arg(server.serverPort()));
    bool isFinished = false;

    QNetworkReply *const reply = manager->get(QNetworkRequest(url));
    QObject::connect(reply, &QNetworkReply::finished, [&isFinished] { isFinished = true; });
    spinUntil([&isFinished] { return isFinished; });

    EXPECT_EQ(reply->error(), QNetworkReply::ContentAccessDenied);
    EXPECT_FALSE(server.hasPendingConnections());
}

} // namespace
} // namespace vantrel::test
