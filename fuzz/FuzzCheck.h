#pragma once

#include <QByteArrayView>

#include <cstdio>
#include <cstdlib>

namespace vantrel::fuzz {

/// What a fuzzer does with one input: it reads it and checks properties of what comes out. Each
/// fuzzer defines it.
void tryInput(QByteArrayView input);

/// Ends the program, which is how a fuzzer reports an input, when a property does not hold.
inline void check(bool holds, const char *property)
{
    if (!holds) {
        std::fprintf(stderr, "broken property: %s\n", property);
        std::abort();
    }
}

} // namespace vantrel::fuzz
