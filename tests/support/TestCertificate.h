#pragma once

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>

namespace vantrel::test {

/// A certificate for 127.0.0.1 that it signed itself, with its key. Made by the `openssl` program.
class TestCertificate final
{
public:
    TestCertificate();

    /// For a server that shows this certificate.
    [[nodiscard]] QSslConfiguration serverConfiguration() const;

    [[nodiscard]] const QSslCertificate &certificate() const { return m_certificate; }

private:
    QSslCertificate m_certificate{};
    QSslKey m_key{};
};

/// Lets every connection of this process trust a certificate, for as long as it lives.
class Trust final
{
public:
    explicit Trust(const TestCertificate &certificate);
    Trust(const Trust &) = delete;
    Trust &operator=(const Trust &) = delete;
    ~Trust();

private:
    QSslConfiguration m_former = QSslConfiguration::defaultConfiguration();
};

} // namespace vantrel::test
