#include "support/TestCertificate.h"

#include "support/ProcessRun.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

} // namespace

TestCertificate::TestCertificate()
{
    const QTemporaryDir folder;
    const QString keyPath = folder.filePath(u"key.pem"_s);
    const QString certificatePath = folder.filePath(u"certificate.pem"_s);
    const ProcessRun made =
        run(u"openssl"_s,
            {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
             u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-days"_s, u"2"_s, u"-subj"_s,
             u"/CN=Vantrel's tests"_s, u"-addext"_s, u"subjectAltName=IP:127.0.0.1"_s, u"-keyout"_s,
             keyPath, u"-out"_s, certificatePath});
    EXPECT_EQ(made.exitCode, 0) << made.errors.constData();
    m_certificate = QSslCertificate(contentOf(certificatePath));
    m_key = QSslKey(contentOf(keyPath), QSsl::Ec);
}

QSslConfiguration TestCertificate::serverConfiguration() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(m_certificate);
    configuration.setPrivateKey(m_key);
    return configuration;
}

Trust::Trust(const TestCertificate &certificate)
{
    QSslConfiguration trusting = m_former;
    trusting.addCaCertificate(certificate.certificate());
    QSslConfiguration::setDefaultConfiguration(trusting);
}

Trust::~Trust()
{
    QSslConfiguration::setDefaultConfiguration(m_former);
}

} // namespace vantrel::test
