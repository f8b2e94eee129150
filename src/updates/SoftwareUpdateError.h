#pragma once

#include <QString>

namespace vantrel {

/// Why a check for updates or a download ended without one. Its description is the sentence that
/// people read.
struct SoftwareUpdateError
{
    enum class Case {
        unreachable,      ///< No answer, or one that broke off.
        refused,          ///< An answer without what was asked for.
        insecureRedirect, ///< Sent on to an address that is not https.
        tooManyRedirects,
        feedTooLarge,
        feedNotSigned, ///< Without a signature, or with one of somebody else.
        feedMalformed,
        feedDowngraded,     ///< The newest version is older than the running one.
        feedWithoutPackage, ///< Nothing for this system.
        packageOfOtherLength,
        packageNotSigned, ///< Without the signature that the feed promised.
        packageNotKept,   ///< The disk refused it.
    };

    Case kind = Case::feedMalformed;
    QString detail{}; ///< The platform's sentence, of `unreachable` and `packageNotKept`; the
                      ///< version of `feedDowngraded`.
    int status = 0;   ///< Of `refused`.

    [[nodiscard]] QString description() const;

    bool operator==(const SoftwareUpdateError &) const = default;
};

} // namespace vantrel
