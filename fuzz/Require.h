// SPDX-License-Identifier: GPL-3.0-or-later
// What a fuzz target promises: if it does not hold, the input is a finding.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void require(bool promise, const char* words)
{
    if (promise)
        return;
    std::fprintf(stderr, "broken promise: %s\n", words);
    std::abort();
}
