#pragma once

#include <cstdio>
#include <cstdlib>

namespace vantrel::fuzz {

/// Ends the program, which is how a fuzzer reports an input, when a property does not hold.
inline void check(bool holds, const char *property)
{
    if (!holds) {
        std::fprintf(stderr, "broken property: %s\n", property);
        std::abort();
    }
}

} // namespace vantrel::fuzz
