// SPDX-License-Identifier: GPL-3.0-or-later
// A box that shows one of several entries, and opens them as a menu: by a click, or by return or space; the
// arrow keys choose the neighbours. It is also the content of any other menu, and a submenu.
//
// Bound to a parameter, its value is the number of the entry. Numbers of results count neither separators nor
// the rows of submenus; rows count everything. A menu opens and returns; the choice comes later, as one
// gesture. [window thread], except for parameterChanged.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/controls/CParamDisplay.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/window/IMenu.h"

#include <vector>

namespace Tovra
{
class COptionMenu : public CParamDisplay, public IMenu
{
public:
    explicit COptionMenu(const CRect& rect, CControlListener* listener = nullptr, long tag = 0,
                         CBitmap* background = nullptr, long style = 0);
    // Filled with the titles, and bound.
    COptionMenu(const CRect& rect, Orbel::ParameterProperty* property, const char* const* titles, int count);
    COptionMenu(const COptionMenu&) = delete;

    // Each answers the entry, which the menu owns. The row is where it goes; -1 for the end. The menu takes
    // over the reference to an item.
    CMenuItem* addEntry(CMenuItem* item, long row = -1);
    CMenuItem* addEntry(COptionMenu* submenu, const char* title);
    CMenuItem* addEntry(const char* title, long row = -1, long itemFlags = CMenuItem::kNoFlags);
    CMenuItem* addSeparator(long row = -1);
    bool removeEntry(long row);
    void removeAllEntry();

    const std::vector<Kept<CMenuItem>>& getItems() const { return items; }
    long getNbEntries() const override { return long(items.size()); }
    // Null out of range.
    CMenuItem* getEntry(long row) const override;
    COptionMenu* getSubMenu(long row) const;

    // The entry that is shown; null for none. Its row, or, without separators and submenus, its number.
    CMenuItem* getCurrent() const;
    long getCurrentIndex(bool countsAll = false) const;
    // False, with nothing changed, if there is no such entry. Nobody is told.
    bool setCurrent(long index, bool countsAll = false);
    // The number of a row, which is -1 for separators and submenus, and the row of a number.
    long numberOfRow(long row) const;
    long rowOfNumber(long number) const;

    // checkEntryAlone takes the marks from all others.
    bool checkEntry(long row, bool flag);
    bool checkEntryAlone(long row);
    bool isCheckEntry(long row) const;
    // Digits of the numbers before the titles: 1 to 3, anything else for none.
    void setPrefixNumbers(long digits) { prefixDigits = digits; }
    long getPrefixNumbers() const override { return prefixDigits; }

    // Opens the menu below the box. False without a frame.
    virtual bool popUp();
    // The menu or submenu of the last choice, and the number in it; null and -1 before the first one, and
    // while a menu is open.
    COptionMenu* getLastItemMenu(long& number) const;
    // The menu in which the entry of that number stands if the entries of submenus are counted in their
    // places, and its number there; null out of range.
    COptionMenu* getItemMenu(long number, long& numberInMenu, long& counted);

    CPoint getMenuPosition() const override;
    CBaseObject* countedObject() override { return this; }

    // The value is a number.
    void setValue(float number) override;
    void parameterChanged(Orbel::ParameterProperty* property) override;
    void draw(CDrawContext* context) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    long onKeyDown(TovraKeyCode& code) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "COptionMenu"; }

protected:
    // A choice has come from the menu that was opened; index is -1 for none.
    virtual void chosen(COptionMenu& menu, long number);

private:
    // Takes over what another thread has written meanwhile.
    void followValue();
    void stepBy(long rows);

    std::vector<Kept<CMenuItem>> items;
    long current = -1; // row
    long prefixDigits = 0;
    Core::Relaxed<bool> hasNewValue = false; // set by any thread
    bool isOpen = false;
    COptionMenu* lastMenu = nullptr; // this one, or the submenu that is kept
    Kept<COptionMenu> lastSubmenu;
    long lastNumber = -1;
};

// What a context menu does with a choice, and where it opens.
struct TovraContextInfo
{
    CFrame* frame = nullptr;
    CPoint place;                                                 // of its top left, in the frame
    std::function<void(COptionMenu& menu, long number)> callback; // never with -1
};

// A menu without a face, which code opens, for example at a right click.
class Tovra_ContextMenu : public COptionMenu, public CControlListener
{
public:
    explicit Tovra_ContextMenu(const TovraContextInfo& description);

    bool popUp() override;
    CPoint getMenuPosition() const override { return info.place; }
    void callbackFunction(COptionMenu& menu, long number);
    void valueChanged(CControl* control) override;
    void draw(CDrawContext*) override { setDirty(false); }
    MouseEventResult onMouseDown(CPoint&, const long&) override { return kMouseUnimplemented; }
    const char* getClassName() const override { return "Tovra_ContextMenu"; }

protected:
    void chosen(COptionMenu& menu, long number) override { callbackFunction(menu, number); }

private:
    const TovraContextInfo info;
};
}
