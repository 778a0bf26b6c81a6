// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of one open menu: their places, and which row a key goes to. It copies what it shows, so that a
// menu that changes while it is open does no harm.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/window/IMenu.h"

#include <functional>
#include <string>
#include <vector>

namespace Tovra
{
class CBitmap;

struct MenuRow
{
    enum Kind
    {
        choice,
        submenu,
        title,
        separator
    };

    long index = 0; // in the menu
    Kind kind = choice;
    bool isEnabled = true;
    bool isChecked = false;
    std::string text;
    std::string key;        // "Ctrl+S"
    IMenu* below = nullptr; // the submenu, kept alive by the entry
    Kept<CBaseObject> entry;
    CBitmap* icon = nullptr; // the entry's
    int top = 0;
    int height = 0;

    // A key or the mouse can stop here.
    bool isReachable() const { return isEnabled && (kind == choice || kind == submenu); }
};

// [window thread]
class MenuRows
{
public:
    // scale: pixels of the window to those of the plug-in. textWidth: in pixels of the window.
    MenuRows(IMenu& menu, double scale, const std::function<double(const std::string&)>& textWidth);

    IMenu& menu() const { return *shown; }
    const std::vector<MenuRow>& rows() const { return list; }
    const MenuRow& operator[](int row) const { return list[std::size_t(row)]; }
    int count() const { return int(list.size()); }
    int width() const { return fullWidth; }
    int height() const { return fullHeight; }

    // Both -1 for none. y from the top of the first row's margin.
    int rowAt(int y) const;
    // The next row that can be reached; after the last one comes the first. From -1, the first or last one.
    int step(int from, bool forward) const;
    // The next reachable row whose title begins with the character, upper or lower case.
    int beginningWith(char first, int from) const;

    // At scale 1.
    static constexpr int rowHeight = 22;
    static constexpr int separatorHeight = 9;
    static constexpr int margin = 5; // above the first row and below the last
    static constexpr int textLeft = 26;
    static constexpr int iconWidth = 20; // beside the text, if any row has an icon
    static constexpr int textRight = 26; // with room for the arrow of a submenu
    static constexpr int keyGap = 24;
    static constexpr int narrowest = 96;
    static constexpr int widest = 560;

    bool hasIcons() const { return withIcons; }

private:
    IMenu* shown;
    Kept<CBaseObject> kept;
    std::vector<MenuRow> list;
    int fullWidth = 0;
    int fullHeight = 0;
    bool withIcons = false;
};
}
