#ifndef GNSS_FUZZ_FUZZPROPERTY_H
#define GNSS_FUZZ_FUZZPROPERTY_H

#include <cstdio>
#include <cstdlib>
#include <string>

// Checks a property that every result of a parser must have. A wrong result is as much a finding
// as a crash, so a property that does not hold aborts: libFuzzer then keeps the input as a
// reproducer, and the replay of the seed corpus fails.
inline void RequireProperty(bool holds, const char* property, const std::string& detail = "")
{
    if (holds) {
        return;
    }
    std::fprintf(stderr, "property violated: %s\n", property);
    if (!detail.empty()) {
        std::fprintf(stderr, "  %s\n", detail.c_str());
    }
    std::abort();
}

#endif
