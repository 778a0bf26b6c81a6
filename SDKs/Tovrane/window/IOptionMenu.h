// SPDX-License-Identifier: GPL-3.0-or-later
// A window system's pop-up menu. IFrame::createOptionMenu makes it, with one reference, to be opened once.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/window/IMenu.h"

#include <functional>

namespace Tovra
{
class IOptionMenu : public CBaseObject
{
public:
    using Done = std::function<void(MenuChoice)>;

    // [window thread]  Shows the menu and returns; the host's event loop goes on while it is open, and done
    // is called from there once, when it has closed. The menu's counted object and this object are kept alive
    // until then, so the caller may forget both at once.
    //
    // Nothing is chosen if the menu was cancelled, if its window or the mouse was lost, or if the frame is
    // being closed: then done is called before the frame is closed. If the menu cannot open (another one is
    // open, the frame has no window any more), done is called within this call.
    virtual void openMenu(IMenu& menu, Done done) = 0;
};
}
