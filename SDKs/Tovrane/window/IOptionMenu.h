// SPDX-License-Identifier: GPL-3.0-or-later
// A window system's pop-up menu. IFrame::createOptionMenu makes it, with one reference, to be opened once.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/window/IMenu.h"

namespace Tovra
{
class IOptionMenu : public CBaseObject
{
public:
    // [window thread]  Shows the menu and returns when it has closed. Nothing is chosen if the menu was
    // cancelled, or if there is no frame or it was closed meanwhile. The caller keeps the menu alive.
    virtual MenuChoice openMenu(IMenu& menu) = 0;
};
}
