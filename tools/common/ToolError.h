// SPDX-License-Identifier: GPL-3.0-or-later
// Why a command cannot go on, in one line for a person. The command line prints it after "lodex: " and
// exits with 2.
#pragma once

#include <stdexcept>

namespace lodex
{
class ToolError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
}
