#include "onboarding/OpenRouterSignInError.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString OpenRouterSignInError::description() const
{
    // A message may hold what looks like a place to be filled.
    const QString reason = u'(' + message.value_or(u"status "_s + QString::number(status)) + u')';
    switch (kind) {
    case Case::couldNotStartListener:
        return u"Couldn't start sign-in "_s + reason +
               u". Try again, or paste an API key instead."_s;
    case Case::denied:
        return u"OpenRouter didn't finish sign-in "_s + reason + u". Try again."_s;
    case Case::exchangeFailed:
        return u"OpenRouter couldn't create a key "_s + reason + u". Try again."_s;
    case Case::network:
        return u"Couldn't reach OpenRouter "_s + reason +
               u". Check your connection and try again."_s;
    case Case::couldNotOpenBrowser:
        return u"Couldn't open your browser. Try again, or paste an API key instead."_s;
    case Case::timedOut:
        return u"Sign-in timed out. Try again when you're ready."_s;
    case Case::invalidExchangeResponse:
        return u"OpenRouter sent an unexpected response. Try again."_s;
    }
    Q_UNREACHABLE();
}

} // namespace vantrel
