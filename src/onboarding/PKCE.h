#pragma once

#include <QString>

namespace vantrel {

/// The proof that who exchanges a sign-in's code is who began it (RFC 7636, method S256): the
/// challenge goes through the browser first, the verifier straight to the provider at the end.
struct PKCE
{
    QString verifier{};
    QString challenge{};

    bool operator==(const PKCE &) const = default;
};

/// The pair of this verifier.
[[nodiscard]] PKCE pkceOf(const QString &verifier);

/// A pair that nobody can guess, from the system's secure random source. Without that source the
/// process ends, since a sign-in without it would protect nothing.
[[nodiscard]] PKCE generatePKCE();

} // namespace vantrel
