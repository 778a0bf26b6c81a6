// SPDX-License-Identifier: GPL-3.0-or-later
// How an operation of the library ended. The library itself stays quiet; a window or a tool can say it.
#pragma once

#include <string>

struct PresetResult
{
    std::string problem; // the first thing that failed, for a person: "01-Kick.dks: Permission denied". Empty
                         // if all was done
    int written = 0;     // files that were written, renamed or deleted

    explicit operator bool() const { return problem.empty(); }
};
