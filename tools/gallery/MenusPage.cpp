#include "Tovrane/CMenuItem.h"
#include "Tovrane/IMenu.h"
#include "Tovrane/Kept.h"
#include "Tovrane/platform/x11/MenuPainter.h"
#include "gallery/GalleryPage.h"
#include "gallery/Sketch.h"

#include <memory>

using namespace Tovra;

namespace Gallery
{
namespace
{
class Menu : public CBaseObject, public IMenu
{
public:
    explicit Menu(long digits = 0) : prefixDigits(digits) {}
    ~Menu() override
    {
        for (CMenuItem* item : items)
            item->forget();
    }

    CMenuItem& add(const char* title, long flags = CMenuItem::kNoFlags)
    {
        items.push_back(new CMenuItem(title, flags));
        return *items.back();
    }

    long getNbEntries() const override { return long(items.size()); }
    CMenuItem* getEntry(long index) const override
    {
        return index >= 0 && index < getNbEntries() ? items[size_t(index)] : nullptr;
    }
    long getPrefixNumbers() const override { return prefixDigits; }
    CPoint getMenuPosition() const override { return {}; }
    CBaseObject* countedObject() override { return this; }

private:
    std::vector<CMenuItem*> items;
    long prefixDigits;
};

void fillPresets(Menu& menu)
{
    menu.add("Presets", CMenuItem::kTitle);
    menu.add("Load...").setKey("o", 8);
    menu.add("Save as...").setKey("s", 9);
    menu.add("", CMenuItem::kSeparator);
    menu.add("Slow pump", CMenuItem::kChecked);
    menu.add("Off-beat breath");
    menu.add("Nothing selected", CMenuItem::kDisabled);
    menu.add("", CMenuItem::kSeparator);
    const auto more = new Menu;
    more->add("an entry");
    menu.add("Factory").setSubmenu(more);
    more->forget();
}

void fillTimes(Menu& menu)
{
    for (const char* name : {"1/1", "1/2", "1/4", "1/8", "1/8T", "1/16"})
        menu.add(name);
    menu.getEntry(2)->setChecked(true);
}

void drawMenu(CDrawContext& context, Menu& menu, int marked)
{
    const MenuPainter painter(1.0);
    const MenuRows rows(menu, 1.0, [&](const std::string& text) { return painter.textWidth(context, text); });
    painter.draw(context, rows, {rows.width(), rows.height(), 0, marked});
}

Sketch* menuView(const CRect& rect, void (*fill)(Menu&), long digits, int marked)
{
    return new Sketch(rect,
                      [fill, digits, marked](CDrawContext& context)
                      {
                          const auto menu = new Menu(digits);
                          fill(*menu);
                          drawMenu(context, *menu, marked);
                          menu->forget();
                      });
}
}

void fillMenus(CFrame& frame)
{
    frame.addView(menuView({30, 60, 280, 400}, fillPresets, 0, 4));
    frame.addView(menuView({320, 60, 460, 400}, fillTimes, 0, -1));
    frame.addView(menuView({480, 60, 632, 400}, fillTimes, 2, 3));
}
}
