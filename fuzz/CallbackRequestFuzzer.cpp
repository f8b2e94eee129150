// Whatever connects to the listener of a sign-in: what follows the head of a request changes
// nothing, a request cannot be read before its head is whole, and what a provider's error says is
// short enough and clean enough to be shown.

#include "FuzzCheck.h"

#include "onboarding/CallbackAnswer.h"
#include "onboarding/CallbackRequest.h"

#include <algorithm>

namespace {

using vantrel::fuzz::check;

void checkError(const QString &message)
{
    check(!message.isEmpty() && message == message.trimmed(),
          "an error is trimmed and says something");
    check(std::none_of(message.cbegin(), message.cend(),
                       [](QChar each) { return each.category() == QChar::Other_Control; }),
          "an error has no control character");
}

} // namespace

void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const auto request = vantrel::parseCallbackRequest(input);
    const qsizetype headEnd = input.indexOf(vantrel::endOfHead);
    check(headEnd >= 0 || !request, "a request has a whole head");
    if (headEnd >= 0) {
        const qsizetype length = headEnd + vantrel::endOfHead.size();
        check(vantrel::parseCallbackRequest(input.first(length)) == request,
              "what follows the head changes nothing");
        check(!vantrel::parseCallbackRequest(input.first(length - 1)),
              "a head that is not whole is no request");
    }
    if (!request) {
        return;
    }
    const vantrel::CallbackAnswer answer = answerTo(*request, request->path);
    check(answer.outcome.has_value() == (answer.page != vantrel::CallbackPage::notFound),
          "a page other than that of what is not found tells an outcome");
    if (answer.outcome && *answer.outcome) {
        check(!(*answer.outcome)->isEmpty(), "a code is not empty");
    } else if (answer.outcome) {
        checkError(answer.outcome->error().message);
    }
}
