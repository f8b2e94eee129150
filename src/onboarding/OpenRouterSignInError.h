#pragma once

#include <QString>

#include <optional>

namespace vantrel {

/// Why a browser sign-in brought no key. Its description is the sentence that screens show.
struct OpenRouterSignInError
{
    enum class Case {
        couldNotStartListener,
        denied,
        exchangeFailed,
        network,
        couldNotOpenBrowser,
        timedOut,
        invalidExchangeResponse,
    };

    Case kind = Case::timedOut;
    std::optional<QString> message{}; ///< Of the first four; of an exchange only if it had one.
    int status = 0;                   ///< Of `exchangeFailed`.

    [[nodiscard]] QString description() const;

    bool operator==(const OpenRouterSignInError &) const = default;
};

} // namespace vantrel
