// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/CMenuItem.h"

#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/window/IMenu.h"

#include <cstdio>

namespace Tovra
{
CMenuItem::CMenuItem(const char* text, long withFlags) : flags(withFlags)
{
    setTitle(text);
}

CMenuItem::CMenuItem(const CMenuItem& other) = default;

CMenuItem::~CMenuItem() = default;

void CMenuItem::setSubmenu(IMenu* menu)
{
    submenuObject.reset(menu != nullptr ? menu->countedObject() : nullptr);
    submenu = menu;
}

void CMenuItem::setKey(const char* text, long modifiers)
{
    key = text != nullptr ? text : "";
    keyModifiers = modifiers;
}

void CMenuItem::setIcon(CBitmap* bitmap)
{
    icon.reset(bitmap);
}

static std::string prefixNumber(long number, long digits)
{
    char text[24];
    switch (digits)
    {
    case 1:
        std::snprintf(text, sizeof text, "%1ld ", number);
        break;
    case 2:
        std::snprintf(text, sizeof text, "%02ld ", number);
        break;
    case 3:
        std::snprintf(text, sizeof text, "%03ld ", number);
        break;
    default:
        return {};
    }
    return text;
}

std::string shownTitle(const IMenu& menu, long index)
{
    const CMenuItem* const item = menu.getEntry(index);
    if (item == nullptr)
        return {};
    return prefixNumber(index + 1, menu.getPrefixNumbers()) + item->getTitle();
}

bool isChoosable(const IMenu& menu, long index)
{
    const CMenuItem* const item = menu.getEntry(index);
    return item != nullptr && item->isEnabled() && !item->isSeparator() && !item->isTitle() &&
           item->getSubmenu() == nullptr;
}
}
