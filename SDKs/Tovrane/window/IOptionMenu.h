// A window system's pop-up menu. IFrame::createOptionMenu makes it with one reference, for one opening.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/window/IMenu.h"

namespace Tovra
{
class IOptionMenu : public CBaseObject
{
public:
    // [window thread]  Shows the menu and returns when it has closed. No choice if there is no frame, if it
    // was cancelled, or if the frame went away meanwhile. The caller keeps the menu alive.
    virtual MenuChoice openMenu(IMenu& menu) = 0;
};
}
