#pragma once

#include "platform/http/NetworkHttpLoader.h"
#include "support/ManualClock.h"
#include "support/ScriptedServer.h"
#include "support/TestCertificate.h"
#include "support/UpdateMaker.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace vantrel::test {

/// An update server on the loopback interface that speaks TLS, whose certificate this process
/// trusts, and the makers of the updates.
class UpdatesTest : public testing::Test
{
protected:
    /// Answers the next request with this body.
    void answer(const QByteArray &body);

    /// Answers the next request by leading on to another address.
    void redirect(const QByteArray &location, int status = 302);

    [[nodiscard]] QUrl feedURL() const { return server.url(QStringLiteral("/appcast.xml")); }

    /// A version with the package `package` on the server.
    [[nodiscard]] SampleItem sampleItem(const QString &version = QStringLiteral("0.2.0")) const;
    [[nodiscard]] QByteArray signedFeed(const QList<SampleItem> &items) const;

    /// What lies in the folder of packages, hidden files included.
    [[nodiscard]] QStringList keptFiles() const;

    /// The targets of all requests so far.
    [[nodiscard]] QList<QByteArray> askedFor() const;

    const QByteArray package = QByteArray("a package of some length\n").repeated(10'000);
    TestCertificate certificate;
    Trust trust{certificate};
    ScriptedServer server{certificate.serverConfiguration()};
    ManualClock clock;
    NetworkHttpLoader session{clock};
    UpdateMaker maker;
    QTemporaryDir home;
    const QString packageFolder = home.filePath(QStringLiteral("cache/updates"));
};

} // namespace vantrel::test
