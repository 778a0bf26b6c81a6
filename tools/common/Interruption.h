// SPDX-License-Identifier: GPL-3.0-or-later
// Ctrl-C and the other polite requests to stop: work ends at the next block, and files that were begun are
// removed.
#pragma once

namespace lodex
{
struct Interrupted
{
    int signal;
};

// From here on SIGINT, SIGTERM and SIGHUP are only noted, and a file that grows beyond its limit is an
// error of the write and not the end of the process.
void noteInterruptions();
// Throws Interrupted if one was noted.
void stopIfInterrupted();
}
