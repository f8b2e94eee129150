#pragma once

#include <QString>

#include <cstdint>
#include <random>
#include <vector>

namespace vantrel::sample {

/// How a provider misbehaves at one request.
enum class Fault {
    none,
    slow,            ///< Long pauses between the parts of the answer.
    silent,          ///< Takes the request, never answers.
    resetBeforeHead, ///< The connection is reset without an answer,
    resetInAnswer,   ///< or in the middle of it.
    noHttp,          ///< Bytes that are no HTTP.
    brokenBody,      ///< Good HTTP, with a body that is neither JSON nor events.
    tooManyRequests, ///< Status 429.
    serverError,     ///< Status 500.
    huge,            ///< An answer of some megabytes.
};

/// In the words of the log.
[[nodiscard]] QString faultName(Fault fault);

/// One choice for each request. The same seed and shares give the same choices, on every machine.
class Faults
{
public:
    struct Share
    {
        Fault fault = Fault::none;
        std::uint32_t weight = 0;
    };

    /// More than half is good, so that what follows upon answers is reached, too.
    static std::vector<Share> usualShares();

    /// The weights' sum must not be 0.
    explicit Faults(std::uint32_t seed, std::vector<Share> shares = usualShares());

    [[nodiscard]] Fault next();

private:
    std::mt19937 m_numbers;
    std::vector<Share> m_shares;
    std::uint32_t m_sum = 0;
};

} // namespace vantrel::sample
