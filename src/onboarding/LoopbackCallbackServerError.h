#pragma once

#include <QString>

namespace vantrel {

/// Why a callback server has no code for its caller. Who reads it makes a sentence of it.
struct LoopbackCallbackServerError
{
    enum class Case {
        listenerFailed, ///< The listener could not start, or the server was misused.
        providerError,  ///< The provider sent an error instead of a code.
        cancelled,      ///< The server was stopped; without a message.
    };

    Case kind = Case::listenerFailed;
    QString message{};

    bool operator==(const LoopbackCallbackServerError &) const = default;
};

} // namespace vantrel
