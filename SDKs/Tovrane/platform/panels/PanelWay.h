// SPDX-License-Identifier: GPL-3.0-or-later
// One way to show a file panel: the desktop portal, or a program. FilePanel tries one after the other.
#pragma once

#include "Tovrane/window/IFileSelector.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Tovra
{
// [window thread]
class PanelWay
{
public:
    enum class End
    {
        chosen,
        cancelled,
        unavailable // this way does not exist here, or it failed before it showed anything
    };
    using Ended = std::function<void(End, std::vector<std::string> paths)>;

    virtual ~PanelWay() = default; // closes the panel; ended is not called any more

    // Once for each object. The panel lies over the X11 window of that number, 0 for none. ended is called
    // within this call or later from the run loop; only the first call counts. It does not destroy this
    // object.
    virtual void open(const FileSelectorOptions& options, std::uint32_t window, Ended ended) = 0;
};
}
