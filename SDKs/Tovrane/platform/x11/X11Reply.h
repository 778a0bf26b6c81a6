// SPDX-License-Identifier: GPL-3.0-or-later
// What XCB hands out belongs to the caller, who frees it.
#pragma once

#include <cstdlib>
#include <memory>

namespace Tovra
{
struct X11Free
{
    void operator()(void* memory) const { std::free(memory); }
};

// A reply, event or error; null if the request failed or the server is gone.
template <class T>
using X11Reply = std::unique_ptr<T, X11Free>;
}
