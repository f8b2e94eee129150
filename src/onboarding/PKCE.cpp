#include "onboarding/PKCE.h"

#include <QByteArray>
#include <QCryptographicHash>

#include <sys/random.h>

namespace vantrel {

namespace {

constexpr qsizetype randomByteCount = 32;

QString base64Url(const QByteArray &bytes)
{
    return QString::fromLatin1(
        bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

} // namespace

PKCE pkceOf(const QString &verifier)
{
    PKCE pair;
    pair.verifier = verifier;
    pair.challenge =
        base64Url(QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256));
    return pair;
}

PKCE generatePKCE()
{
    // Not Qt's generator, which goes on with guessable numbers when the system gives none.
    QByteArray bytes(randomByteCount, Qt::Uninitialized);
    if (::getentropy(bytes.data(), std::size_t(bytes.size())) != 0) {
        qFatal("the system's random source failed");
    }
    return pkceOf(base64Url(bytes));
}

} // namespace vantrel
