// SPDX-License-Identifier: GPL-3.0-or-later
// How a piece of work with a file ended: done, or why not.
//
// The framework may ignore it; a window or a tool shows the words. Nothing here throws.
#pragma once

#include <string>

namespace Core
{
struct FileResult
{
    std::string problem; // a few words for a person, without the file's name; empty if the work is done

    explicit operator bool() const { return problem.empty(); }

    // [any thread]  What a system call's errno says ("Permission denied").
    static FileResult failed(int error);
};
}
