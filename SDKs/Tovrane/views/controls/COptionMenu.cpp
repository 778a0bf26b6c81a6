// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/COptionMenu.h"

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IOptionMenu.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Tovra
{
constexpr long openingButtons = kButtonLeft | kButtonRight | kModControl;

COptionMenu::COptionMenu(const CRect& rect, CControlListener* heardBy, long withTag, CBitmap* bitmap,
                         long bits)
    : CParamDisplay(rect, bitmap, bits)
{
    setListener(heardBy);
    setTag(withTag);
    setWantsFocus(true);
    setMax(0.0f);
}

COptionMenu::COptionMenu(const CRect& rect, Orbel::ParameterProperty* property, const char* const* titles,
                         int count)
    : COptionMenu(rect)
{
    setStyle(kCheckStyle);
    for (int i = 0; i < count; ++i)
        addEntry(titles[i]);
    setAttachedProperty(property);
}

bool COptionMenu::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "COptionMenu") == 0) || CParamDisplay::isTypeOf(name);
}

// Entries

CMenuItem* COptionMenu::addEntry(CMenuItem* item, long row)
{
    const bool isInside = row >= 0 && row < getNbEntries();
    if (isInside && row <= current)
        ++current;
    items.insert(isInside ? items.begin() + row : items.end(), Kept<CMenuItem>::adopt(item));
    setMax(float(std::max(numberOfRow(getNbEntries() - 1), 0L)));
    hasNewValue = getAttachedProperty() != nullptr;
    return item;
}

CMenuItem* COptionMenu::addEntry(COptionMenu* submenu, const char* title)
{
    auto* const item = new CMenuItem(title);
    item->setSubmenu(submenu);
    return addEntry(item);
}

CMenuItem* COptionMenu::addEntry(const char* title, long row, long itemFlags)
{
    return addEntry(new CMenuItem(title, itemFlags), row);
}

CMenuItem* COptionMenu::addSeparator(long row)
{
    return addEntry(new CMenuItem("", CMenuItem::kSeparator), row);
}

bool COptionMenu::removeEntry(long row)
{
    if (getEntry(row) == nullptr)
        return false;
    items.erase(items.begin() + row);
    current = current == row ? -1 : current > row ? current - 1 : current;
    setDirty(true);
    return true;
}

void COptionMenu::removeAllEntry()
{
    items.clear();
    current = -1;
    setDirty(true);
}

CMenuItem* COptionMenu::getEntry(long row) const
{
    return row >= 0 && row < getNbEntries() ? items[std::size_t(row)].get() : nullptr;
}

COptionMenu* COptionMenu::getSubMenu(long row) const
{
    const CMenuItem* const item = getEntry(row);
    return item != nullptr ? dynamic_cast<COptionMenu*>(item->getSubmenu()) : nullptr;
}

static bool isCounted(const CMenuItem& item)
{
    return !item.isSeparator() && item.getSubmenu() == nullptr;
}

long COptionMenu::numberOfRow(long row) const
{
    const CMenuItem* const item = getEntry(row);
    if (item == nullptr || !isCounted(*item))
        return -1;
    return long(std::count_if(items.begin(), items.begin() + row,
                              [](const auto& each) { return isCounted(*each.get()); }));
}

long COptionMenu::rowOfNumber(long number) const
{
    for (long row = 0; row < getNbEntries(); ++row)
        if (isCounted(*items[std::size_t(row)].get()) && number-- == 0)
            return row;
    return -1;
}

CMenuItem* COptionMenu::getCurrent() const
{
    const_cast<COptionMenu*>(this)->followValue();
    return getEntry(current);
}

long COptionMenu::getCurrentIndex(bool countsAll) const
{
    const_cast<COptionMenu*>(this)->followValue();
    return countsAll ? current : numberOfRow(current);
}

bool COptionMenu::setCurrent(long index, bool countsAll)
{
    const long row = countsAll ? index : rowOfNumber(index);
    const CMenuItem* const item = getEntry(row);
    if (item == nullptr || !isCounted(*item))
        return false;
    current = row;
    value = float(numberOfRow(row));
    if ((getStyle() & kCheckStyle) != 0)
        checkEntryAlone(row);
    setDirty(true);
    return true;
}

bool COptionMenu::checkEntry(long row, bool flag)
{
    CMenuItem* const item = getEntry(row);
    if (item != nullptr)
        item->setChecked(flag);
    return item != nullptr;
}

bool COptionMenu::checkEntryAlone(long row)
{
    for (const Kept<CMenuItem>& item : items)
        item->setChecked(false);
    return checkEntry(row, true);
}

bool COptionMenu::isCheckEntry(long row) const
{
    const CMenuItem* const item = getEntry(row);
    return item != nullptr && item->isChecked();
}

COptionMenu* COptionMenu::getLastItemMenu(long& number) const
{
    number = lastNumber;
    return lastMenu;
}

COptionMenu* COptionMenu::getItemMenu(long number, long& numberInMenu, long& counted)
{
    long own = 0;
    for (long row = 0; row < getNbEntries(); ++row)
    {
        if (COptionMenu* const below = getSubMenu(row))
        {
            if (COptionMenu* const found = below->getItemMenu(number, numberInMenu, counted))
                return found;
        }
        else if (isCounted(*items[std::size_t(row)].get()))
        {
            if (counted++ == number)
            {
                numberInMenu = own;
                return this;
            }
            ++own;
        }
    }
    return nullptr;
}

// The menu

CPoint COptionMenu::getMenuPosition() const
{
    CPoint below(size.left, size.bottom);
    return localToFrame(below);
}

bool COptionMenu::popUp()
{
    if (getFrame() == nullptr || isOpen)
        return false;
    followValue();
    lastMenu = nullptr;
    lastSubmenu.reset();
    lastNumber = -1;
    isOpen = true;
    setDirty(true);
    const auto popUp = Kept<IOptionMenu>::adopt(getFrame()->createOptionMenu());
    const auto done = [self = Kept<COptionMenu>(this)](const MenuChoice& choice)
    {
        self->isOpen = false;
        self->setDirty(true);
        if (auto* const menu = dynamic_cast<COptionMenu*>(choice.menu))
            self->chosen(*menu, menu->numberOfRow(choice.index));
    };
    if (popUp)
        popUp->openMenu(*this, done);
    else
        done({});
    return bool(popUp);
}

void COptionMenu::chosen(COptionMenu& menu, long number)
{
    const Kept<COptionMenu> self(this);
    if (number < 0)
        return;
    beginEdit();
    lastMenu = &menu;
    lastSubmenu.reset(&menu != this ? &menu : nullptr);
    lastNumber = number;
    menu.setCurrent(number);
    value = float(number);
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (property != nullptr)
    {
        property->setValue(this, float(number));
        performEdit();
    }
    if (getListener() != nullptr)
        getListener()->valueChanged(this);
    endEdit();
    setDirty(true);
}

MouseEventResult COptionMenu::onMouseDown(CPoint&, const long& buttons)
{
    if ((buttons & openingButtons) == 0)
        return kMouseUnhandled;
    popUp();
    return kMouseHandledNoMoves;
}

// To the next entry that can be chosen.
void COptionMenu::stepBy(long rows)
{
    followValue();
    for (long row = current + rows; getEntry(row) != nullptr; row += rows)
        if (isChoosable(*this, row))
            return chosen(*this, numberOfRow(row));
}

long COptionMenu::onKeyDown(TovraKeyCode& code)
{
    const Kept<COptionMenu> self(this);
    if (getFrame() == nullptr || getFrame()->getFocusView() != this || !isEnabled())
        return kKeyNotHandled;
    switch (code.virtualKey)
    {
    case kVirtualUp:
    case kVirtualLeft:
        return stepBy(-1), kKeyConsumed;
    case kVirtualDown:
    case kVirtualRight:
        return stepBy(1), kKeyConsumed;
    case kVirtualReturn:
    case kVirtualSpace:
        return popUp(), kKeyConsumed;
    default:
        return code.character == ' ' ? (popUp(), kKeyConsumed) : kKeyNotHandled;
    }
}

// The value

void COptionMenu::setValue(float number)
{
    CParamDisplay::setValue(number);
    hasNewValue = true;
    setDirty(true);
}

void COptionMenu::followValue()
{
    constexpr float guard = 0.02f; // of values that lie a little below a whole number
    if (!hasNewValue)
        return;
    hasNewValue = false;
    const Orbel::ParameterProperty* const property = getAttachedProperty();
    const float now = property != nullptr ? property->getCurrentValue() : float(value);
    setCurrent(long(std::floor(guard + now)));
}

void COptionMenu::parameterChanged(Orbel::ParameterProperty* property)
{
    if (property != nullptr && property == getAttachedProperty())
    {
        hasNewValue = true;
        setDirty(true);
    }
    CParamDisplay::parameterChanged(property);
}

void COptionMenu::draw(CDrawContext* context)
{
    constexpr double arrowSpace = 14.0;
    drawBack(context);
    CRect text = size;
    text.right -= arrowSpace;
    if (const CMenuItem* const shown = getCurrent())
        drawText(context, shown->getTitle(), text);
    const double middle = std::floor(size.center().y) + 0.5;
    const double left = size.right - 11.5;
    context->setFillColor(getFontColor());
    CDrawPath arrow(context);
    arrow.moveTo(float(left), float(middle - 1.5));
    arrow.lineTo(float(left + 7.0), float(middle - 1.5));
    arrow.lineTo(float(left + 3.5), float(middle + 2.5));
    arrow.closePath();
    arrow.finish(kFilled, false);
    drawFocus(context);
    setDirty(false);
}

// Context menus

Tovra_ContextMenu::Tovra_ContextMenu(const TovraContextInfo& description)
    : COptionMenu(CRect()), info(description)
{
    setListener(this);
}

bool Tovra_ContextMenu::popUp()
{
    if (info.frame == nullptr)
        return false;
    const auto popUp = Kept<IOptionMenu>::adopt(info.frame->createOptionMenu());
    if (!popUp)
        return false;
    popUp->openMenu(*this,
                    [self = Kept<Tovra_ContextMenu>(this)](const MenuChoice& choice)
                    {
                        if (auto* const menu = dynamic_cast<COptionMenu*>(choice.menu))
                            self->callbackFunction(*menu, menu->numberOfRow(choice.index));
                    });
    return true;
}

void Tovra_ContextMenu::callbackFunction(COptionMenu& menu, long number)
{
    const Kept<Tovra_ContextMenu> self(this);
    const Kept<COptionMenu> chosenMenu(&menu);
    if (number < 0)
        return;
    info.frame->setFocusView(nullptr);
    menu.setCurrent(number);
    if (menu.getListener() != nullptr && menu.getListener() != this)
        menu.getListener()->valueChanged(&menu);
    if (info.callback)
        info.callback(menu, number);
}

// A submenu that was set to a value by code.
void Tovra_ContextMenu::valueChanged(CControl* control)
{
    for (long row = 0; row < getNbEntries(); ++row)
        if (COptionMenu* const below = getSubMenu(row); below != nullptr && below == control)
            callbackFunction(*below, below->getCurrentIndex());
}
}
