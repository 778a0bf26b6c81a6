// SPDX-License-Identifier: GPL-3.0-or-later
// The content of a pop-up menu. The option menu control implements it; window systems read it. [window
// thread]
#pragma once

#include "Tovrane/base/CPoint.h"

namespace Tovra
{
class CBaseObject;
class CMenuItem;

class IMenu
{
public:
    virtual long getNbEntries() const = 0;
    // Null out of range. The menu owns the item.
    virtual CMenuItem* getEntry(long index) const = 0;
    // The number of digits of the numbers before the titles: 1 to 3, or any other value for no numbers.
    virtual long getPrefixNumbers() const = 0;
    // The position of the menu's top left, in frame coordinates. Not used for submenus.
    virtual CPoint getMenuPosition() const = 0;
    // The object whose reference count keeps this menu alive.
    virtual CBaseObject* countedObject() = 0;

protected:
    ~IMenu() = default;
};

// If nothing was chosen the menu is null and the index -1.
struct MenuChoice
{
    IMenu* menu = nullptr; // the menu or submenu that contains the entry
    long index = -1;
};
}
