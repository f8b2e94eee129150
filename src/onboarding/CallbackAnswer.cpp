#include "onboarding/CallbackAnswer.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int maxErrorCharacters = 200;

bool isControlCharacter(QChar character)
{
    // The second kind turns the direction of the text around it.
    return character.category() == QChar::Other_Control ||
           character.category() == QChar::Other_Format;
}

/// Its first characters, as a person counts them, and an ellipsis where there are more.
QString shortened(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (int count = 0; count < maxErrorCharacters; ++count) {
        if (finder.toNextBoundary() < 0) {
            return text;
        }
    }
    return finder.position() < text.size() ? text.left(finder.position()) + u'…' : text;
}

/// A provider's error fit to be shown, or nothing when nothing is left of it.
std::optional<QString> cleaned(const std::optional<QString> &error)
{
    QString text = error.value_or(QString());
    text.removeIf(isControlCharacter);
    text = text.trimmed();
    return text.isEmpty() ? std::nullopt : std::optional(shortened(text));
}

QByteArray makeResponse(const QByteArray &status, const QByteArray &heading,
                        const QByteArray &paragraph)
{
    const QByteArray body =
        R"(<!doctype html><html><head><meta charset="utf-8"><title>Vantrel</title></head>)"
        R"(<body style="font: 15px -apple-system, system-ui, sans-serif; max-width: 420px; )"
        R"(margin: 72px auto; padding: 0 24px; color: #2A2723">)"
        R"(<h1 style="font-size: 18px; color: #1E1B17">)" +
        heading + "</h1><p>" + paragraph + "</p></body></html>";
    return "HTTP/1.1 " + status +
           "\r\n"
           "Content-Type: text/html; charset=utf-8\r\n"
           "Content-Length: " +
           QByteArray::number(body.size()) +
           "\r\n"
           "Cache-Control: no-store\r\n"
           "Connection: close\r\n"
           "\r\n" +
           body;
}

} // namespace

CallbackAnswer answerTo(const CallbackRequest &request, const QString &callbackPath)
{
    CallbackAnswer answer;
    if (request.method != "GET"_L1 || request.path != callbackPath) {
        return answer;
    }
    const std::optional<QString> code = request.firstValue(u"code"_s);
    if (code && !code->isEmpty()) {
        answer.page = CallbackPage::success;
        answer.outcome = CallbackOutcome(*code);
        return answer;
    }
    std::optional<QString> error = cleaned(request.firstValue(u"error_description"_s));
    if (!error) {
        error = cleaned(request.firstValue(u"error"_s));
    }
    if (error) {
        answer.page = CallbackPage::providerError;
        LoopbackCallbackServerError reason{LoopbackCallbackServerError::Case::providerError,
                                           *error};
        answer.outcome = CallbackOutcome(failure(std::move(reason)));
    }
    return answer;
}

const QByteArray &responseBytes(CallbackPage page)
{
    // In the order of the enumerators.
    static const std::array pages{
        makeResponse("200 OK", "Return to Vantrel",
                     "Vantrel is finishing setup. You can close this tab."),
        makeResponse("200 OK", "Sign-in didn't finish", "Go back to Vantrel to try again."),
        makeResponse("404 Not Found", "Not found", ""),
        makeResponse("400 Bad Request", "Bad request", ""),
    };
    return pages.at(std::size_t(page));
}

} // namespace vantrel
