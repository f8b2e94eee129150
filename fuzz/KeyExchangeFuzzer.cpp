// Whatever answers the exchange of a code for a key: a key comes only with a success, an error
// tells what the answer told and no more, and the key comes back when it is answered again.

#include "FuzzCheck.h"

#include "onboarding/OpenRouterOAuth.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdint>

namespace {

using namespace Qt::Literals::StringLiterals;
using Case = vantrel::OpenRouterSignInError::Case;
using vantrel::fuzz::check;
using vantrel::OpenRouterOAuth::keyFromResponse;

constexpr int firstSuccess = 200;
constexpr int firstRedirection = 300;

void checkKey(const QString &key, int status, qsizetype maxLength)
{
    check(status >= firstSuccess && status < firstRedirection, "a key comes with a success");
    check(!key.isEmpty() && key == key.trimmed(), "a key is trimmed and not empty");
    check(key.size() <= maxLength, "a key is no longer than its answer");
    const QJsonObject answer{{"key"_L1, key}};
    check(keyFromResponse(status, QJsonDocument(answer).toJson()) == key,
          "a key answered again is the same");
}

void checkError(const vantrel::OpenRouterSignInError &error, int status, qsizetype maxLength)
{
    const bool isRefusal = status >= 0 && (status < firstSuccess || status >= firstRedirection);
    check(error.kind == (isRefusal ? Case::exchangeFailed : Case::invalidExchangeResponse),
          "only a status other than success is a refusal");
    check(error.status == (isRefusal ? status : 0), "a refusal has the status of its answer");
    check(isRefusal || !error.message, "only a refusal has a message");
    check(!error.message || error.message->size() <= maxLength,
          "a message is no longer than its answer");
}

/// The request of an exchange holds the texts that it was given.
void checkRequest(const QString &code)
{
    const QByteArray body =
        vantrel::OpenRouterOAuth::keyExchangeRequest(QUrl(), code, code + code).body;
    const QByteArray expected = QJsonDocument(QJsonObject{{"code"_L1, code},
                                                          {"code_challenge_method"_L1, "S256"_L1},
                                                          {"code_verifier"_L1, code + code}})
                                    .toJson(QJsonDocument::Compact);
    check(body == expected, "an exchange sends these three keys");
}

} // namespace

/// Two bytes are the status, which may be negative; the rest is the answer's body.
void vantrel::fuzz::tryInput(QByteArrayView input)
{
    constexpr qsizetype statusBytes = 2;
    if (input.size() < statusBytes) {
        return;
    }
    const int status =
        std::int16_t(std::uint16_t(std::uint8_t(input[0]) << 8U | std::uint8_t(input[1])));
    const QByteArray body = input.sliced(statusBytes).toByteArray();

    const auto key = keyFromResponse(status, body);

    if (key) {
        checkKey(*key, status, body.size());
    } else {
        checkError(key.error(), status, body.size());
    }
    checkRequest(QString::fromUtf8(body));
}
