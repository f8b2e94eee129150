#include "onboarding/OpenRouterOAuth.h"

#include "platform/JsonDocument.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>

#include <chrono>
#include <utility>

namespace vantrel::OpenRouterOAuth {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto exchangeTimeout = std::chrono::seconds(60);
constexpr int firstSuccess = 200;
constexpr int lastSuccess = 299;
const QString challengeMethod = QStringLiteral("S256");

QUrl withPath(QUrl base, const QString &path)
{
    base.setPath(path);
    return base;
}

} // namespace

QUrl authorizationURL(const QUrl &site, const QUrl &callbackURL, const QString &challenge)
{
    const QList<std::pair<QByteArray, QString>> items{
        {"callback_url", callbackURL.toString(QUrl::FullyEncoded)},
        {"code_challenge", challenge},
        {"code_challenge_method", challengeMethod},
        {"key_label", u"Vantrel"_s},
    };
    QByteArray query;
    for (const auto &[name, value] : items) {
        query += (query.isEmpty() ? "" : "&") + name + '=' + QUrl::toPercentEncoding(value);
    }
    QUrl url = withPath(site, u"/auth"_s);
    url.setQuery(QString::fromLatin1(query), QUrl::StrictMode);
    return url;
}

HttpRequest keyExchangeRequest(const QUrl &api, const QString &code, const QString &verifier)
{
    const QJsonObject body{
        {u"code"_s, code},
        {u"code_verifier"_s, verifier},
        {u"code_challenge_method"_s, challengeMethod},
    };
    HttpRequest request;
    request.url = withPath(api, u"/api/v1/auth/keys"_s);
    request.method = "POST";
    request.headers.emplaceBack("Content-Type", "application/json");
    request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    request.timeout = exchangeTimeout;
    return request;
}

Result<QString, OpenRouterSignInError> keyFromResponse(int status, const QByteArray &body)
{
    using Case = OpenRouterSignInError::Case;
    const QJsonObject json = documentFromJson(body).object();
    OpenRouterSignInError error;
    error.kind = Case::invalidExchangeResponse;
    if (status >= 0 && (status < firstSuccess || status > lastSuccess)) {
        error.kind = Case::exchangeFailed;
        error.status = status;
        const QJsonValue message = json.value("error"_L1)["message"_L1];
        if (message.isString()) {
            error.message = message.toString();
        }
        return failure(std::move(error));
    }
    QString key = json.value("key"_L1).toString().trimmed();
    if (status < 0 || key.isEmpty()) {
        return failure(std::move(error));
    }
    return key;
}

} // namespace vantrel::OpenRouterOAuth
