// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/MenuRows.h"

#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/window/TovraKeyCode.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
namespace
{
constexpr long mostRows = 10000;

std::string keyText(const CMenuItem& item)
{
    if (item.getKey().empty())
        return {};
    std::string text;
    const long modifiers = item.getKeyModifiers();
    text += modifiers & kKeyCommand ? "Ctrl+" : "";
    text += modifiers & kKeyControl ? "Super+" : "";
    text += modifiers & kKeyAlt ? "Alt+" : "";
    text += modifiers & kKeyShift ? "Shift+" : "";
    text += item.getKey();
    const char last = text.back();
    if (item.getKey().size() == 1 && last >= 'a' && last <= 'z')
        text.back() = char(last - 'a' + 'A');
    return text;
}

MenuRow rowOf(const IMenu& menu, long index, CMenuItem& item)
{
    MenuRow row;
    row.index = index;
    row.entry.reset(&item);
    row.below = item.getSubmenu();
    row.kind = item.isSeparator()     ? MenuRow::separator
               : item.isTitle()       ? MenuRow::title
               : row.below != nullptr ? MenuRow::submenu
                                      : MenuRow::choice;
    row.isEnabled = item.isEnabled();
    row.isChecked = item.isChecked();
    row.icon = item.getIcon();
    if (row.kind != MenuRow::separator)
        row.text = shownTitle(menu, index);
    row.key = keyText(item);
    return row;
}

char lowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}
}

MenuRows::MenuRows(IMenu& menu, double scale, const std::function<double(const std::string&)>& textWidth)
    : shown(&menu), kept(menu.countedObject())
{
    const auto pixels = [scale](double size) { return int(std::lround(size * scale)); };
    double texts = 0.0;
    double keys = 0.0;
    int y = pixels(margin);
    const long entries = std::min(menu.getNbEntries(), mostRows);
    for (long i = 0; i < entries; ++i)
    {
        CMenuItem* item = menu.getEntry(i);
        if (item == nullptr)
            continue;
        MenuRow row = rowOf(menu, i, *item);
        row.top = y;
        row.height = pixels(row.kind == MenuRow::separator ? separatorHeight : rowHeight);
        y += row.height;
        withIcons = withIcons || row.icon != nullptr;
        texts = std::max(texts, row.text.empty() ? 0.0 : textWidth(row.text));
        if (!row.key.empty())
            keys = std::max(keys, keyGap * scale + textWidth(row.key));
        list.push_back(std::move(row));
    }
    fullHeight = y + pixels(margin);
    const double wanted =
        (textLeft + (withIcons ? iconWidth : 0) + textRight) * scale + std::ceil(texts) + std::ceil(keys);
    fullWidth = int(std::clamp(wanted, narrowest * scale, widest * scale));
}

int MenuRows::rowAt(int y) const
{
    for (int i = 0; i < count(); ++i)
        if (y >= (*this)[i].top && y < (*this)[i].top + (*this)[i].height)
            return i;
    return -1;
}

int MenuRows::step(int from, bool forward) const
{
    int row = from;
    for (int tried = 0; tried < count(); ++tried)
    {
        if (row < 0)
            row = forward ? 0 : count() - 1;
        else
            row = (row + (forward ? 1 : count() - 1)) % count();
        if ((*this)[row].isReachable())
            return row;
    }
    return -1;
}

int MenuRows::beginningWith(char first, int from) const
{
    int row = from;
    for (int tried = 0; tried < count(); ++tried)
    {
        row = (row + 1) % count();
        const MenuRow& candidate = (*this)[row];
        if (candidate.isReachable() && !candidate.text.empty() &&
            lowerCase(candidate.text[0]) == lowerCase(first))
            return row;
    }
    return -1;
}
}
