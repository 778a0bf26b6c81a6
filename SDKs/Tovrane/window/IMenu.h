// What a pop-up menu shows. The option menu control implements it; window systems read it. All of it
// belongs to the window thread.
#pragma once

#include "Tovrane/base/CPoint.h"

#include <string>

namespace Tovra
{
class CBaseObject;
class CMenuItem;

class IMenu
{
public:
    virtual long getNbEntries() const = 0;
    // Null out of range. The item stays the menu's.
    virtual CMenuItem* getEntry(long index) const = 0;
    // Digits of the number ahead of each title: 1 to 3, anything else for none.
    virtual long getPrefixNumbers() const = 0;
    // Where the top left of the menu goes, in frame coordinates. Of submenus it is not asked.
    virtual CPoint getMenuPosition() const = 0;
    // The object whose count keeps this menu alive.
    virtual CBaseObject* countedObject() = 0;

protected:
    ~IMenu() = default;
};

// Without a choice the menu is null and the index -1.
struct MenuChoice
{
    IMenu* menu = nullptr; // the menu, or the submenu, that holds the entry
    long index = -1;
};

// The title of an entry with its prefix number, counted from 1. Empty out of range.
std::string shownTitle(const IMenu& menu, long index);

// Whether a click on the entry chooses it: enabled, and neither separator, title nor submenu.
bool isChoosable(const IMenu& menu, long index);
}
