// SPDX-License-Identifier: GPL-3.0-or-later
// One entry of a menu: a heading, a submenu, a separator, or something to choose. [window thread]
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/Kept.h"

#include <string>

namespace Tovra
{
class CBitmap;
class IMenu;

class CMenuItem : public CBaseObject
{
public:
    // Bits of the flag word.
    enum Flags : long
    {
        kNoFlags = 0,
        kDisabled = 1,
        kTitle = 2,
        kChecked = 4,
        kSeparator = 8
    };

    explicit CMenuItem(const char* title, long flags = kNoFlags);
    // The copy shares submenu and icon.
    CMenuItem(const CMenuItem& other);
    ~CMenuItem() override;

    // UTF-8; null counts as empty.
    void setTitle(const char* text) { title = text != nullptr ? text : ""; }
    const std::string& getTitle() const { return title; }
    // The entry keeps the submenu alive. A menu must not contain itself, at any depth.
    void setSubmenu(IMenu* menu);
    IMenu* getSubmenu() const { return submenu; }
    // The key that chooses the entry, with KeyModifier bits; it is shown at the right. Null for none.
    void setKey(const char* text, long modifiers = 0);
    const std::string& getKey() const { return key; }
    long getKeyModifiers() const { return keyModifiers; }
    void setIcon(CBitmap* bitmap);
    CBitmap* getIcon() const { return icon.get(); }

    void setEnabled(bool flag) { setFlag(kDisabled, !flag); }
    bool isEnabled() const { return (flags & kDisabled) == 0; }
    void setChecked(bool flag) { setFlag(kChecked, flag); }
    bool isChecked() const { return (flags & kChecked) != 0; }
    // A heading, which cannot be chosen.
    void setIsTitle(bool flag) { setFlag(kTitle, flag); }
    bool isTitle() const { return (flags & kTitle) != 0; }
    void setIsSeparator(bool flag) { setFlag(kSeparator, flag); }
    bool isSeparator() const { return (flags & kSeparator) != 0; }

private:
    void setFlag(long bit, bool set) { flags = set ? flags | bit : flags & ~bit; }

    std::string title;
    std::string key;
    long keyModifiers = 0;
    long flags;
    IMenu* submenu = nullptr; // kept alive by submenuObject
    Kept<CBaseObject> submenuObject;
    Kept<CBitmap> icon;
};

// The title of a menu's entry after its number, which counts from 1. Empty out of range.
std::string shownTitle(const IMenu& menu, long index);

// Whether a click on the entry chooses it: it is enabled, and no separator, heading or submenu.
bool isChoosable(const IMenu& menu, long index);
}
