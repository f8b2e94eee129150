#include "Faults.h"

#include <utility>

namespace vantrel::sample {

using namespace Qt::Literals::StringLiterals;

QString faultName(Fault fault)
{
    switch (fault) {
    case Fault::none:
        return u"none"_s;
    case Fault::slow:
        return u"slow"_s;
    case Fault::silent:
        return u"silent"_s;
    case Fault::resetBeforeHead:
        return u"reset before head"_s;
    case Fault::resetInAnswer:
        return u"reset in answer"_s;
    case Fault::noHttp:
        return u"no HTTP"_s;
    case Fault::brokenBody:
        return u"broken body"_s;
    case Fault::tooManyRequests:
        return u"status 429"_s;
    case Fault::serverError:
        return u"status 500"_s;
    case Fault::huge:
        return u"huge"_s;
    }
    Q_UNREACHABLE();
}

std::vector<Faults::Share> Faults::usualShares()
{
    return {{Fault::none, 55},         {Fault::slow, 8},
            {Fault::silent, 4},        {Fault::resetBeforeHead, 5},
            {Fault::resetInAnswer, 5}, {Fault::noHttp, 5},
            {Fault::brokenBody, 5},    {Fault::tooManyRequests, 5},
            {Fault::serverError, 5},   {Fault::huge, 3}};
}

Faults::Faults(std::uint32_t seed, std::vector<Share> shares)
    : m_numbers(seed)
    , m_shares(std::move(shares))
{
    for (const Share &share : m_shares) {
        m_sum += share.weight;
    }
}

Fault Faults::next()
{
    // Not by a distribution of the library, whose choices are each library's own.
    std::uint32_t place = std::uint32_t(m_numbers() % m_sum);
    for (const Share &share : m_shares) {
        if (place < share.weight) {
            return share.fault;
        }
        place -= share.weight;
    }
    Q_UNREACHABLE();
}

} // namespace vantrel::sample
