// SPDX-License-Identifier: GPL-3.0-or-later
// A menu that holds its entries and nothing else.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/window/IMenu.h"

#include <memory>
#include <vector>

class PlainMenu final : public Tovra::IMenu
{
public:
    PlainMenu() = default;
    PlainMenu(const PlainMenu&) = delete;
    PlainMenu& operator=(const PlainMenu&) = delete;
    ~PlainMenu()
    {
        for (Tovra::CMenuItem* item : items)
            item->forget();
        counted->forget();
    }

    Tovra::CMenuItem* add(const char* title, long flags)
    {
        items.push_back(new Tovra::CMenuItem(title, flags));
        return items.back();
    }
    PlainMenu& addSubmenu(const char* title)
    {
        submenus.push_back(std::make_unique<PlainMenu>());
        add(title, 0)->setSubmenu(submenus.back().get());
        return *submenus.back();
    }

    long getNbEntries() const override { return long(items.size()); }
    Tovra::CMenuItem* getEntry(long index) const override
    {
        return index >= 0 && index < getNbEntries() ? items[std::size_t(index)] : nullptr;
    }
    long getPrefixNumbers() const override { return digits; }
    Tovra::CPoint getMenuPosition() const override { return position; }
    Tovra::CBaseObject* countedObject() override { return counted; }

    Tovra::CPoint position;
    long digits = 0;

private:
    std::vector<Tovra::CMenuItem*> items;
    std::vector<std::unique_ptr<PlainMenu>> submenus;
    Tovra::CBaseObject* counted = new Tovra::CBaseObject;
};
