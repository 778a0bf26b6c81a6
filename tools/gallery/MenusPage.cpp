// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/parts/EditLinePainter.h"
#include "Tovrane/platform/parts/MenuPainter.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/window/IMenu.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/LiveViews.h"
#include "tools/gallery/Sketch.h"

#include <memory>

using namespace Tovra;

namespace Gallery
{
namespace
{
class Menu : public CBaseObject, public IMenu
{
public:
    explicit Menu(long digits = 0, CPoint place = {}) : prefixDigits(digits), position(place) {}
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
    CPoint getMenuPosition() const override { return position; }
    CBaseObject* countedObject() override { return this; }

private:
    std::vector<CMenuItem*> items;
    long prefixDigits;
    CPoint position;
};

void fillPresets(Menu& menu)
{
    menu.add("Presets", CMenuItem::kTitle);
    menu.add("Load...").setKey("o", kKeyCommand);
    menu.add("Save as...").setKey("s", kKeyCommand | kKeyShift);
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

enum class FieldState
{
    caret,
    selection,
    unfocused,
    scrolled
};

void drawField(CDrawContext& context, const CRect& rect, FieldState state)
{
    EditLine line(255);
    line.setText(state == FieldState::scrolled ? "a name that is too long for its field, seen from its end"
                                               : "Off-beat breath");
    if (state == FieldState::caret || state == FieldState::scrolled)
        line.moveTo(line.text().size(), false);
    else
        line.selectWord(10);
    EditLinePainter painter;
    painter.back = panel;
    painter.font = ink;
    painter.isFocused = state != FieldState::unfocused;
    painter.setField(rect.getWidth(), rect.getHeight());
    painter.draw(context, line);
}

// In a frame text fields have windows of their own; here a clip stands in for them.
class FieldView : public Sketch
{
public:
    FieldView(const CRect& rect, FieldState state)
        : Sketch(rect,
                 [rect, state](CDrawContext& context) {
                     drawField(context, {0, 0, rect.getWidth(), rect.getHeight()}, state);
                 })
    {
    }
};

void addFields(CFrame& frame)
{
    struct Row
    {
        const char* caption;
        FieldState state;
    };
    constexpr Row rows[] = {{"while typing", FieldState::caret},
                            {"selected", FieldState::selection},
                            {"without the keyboard", FieldState::unfocused},
                            {"longer than its field", FieldState::scrolled}};
    double y = 262.0;
    for (const Row& row : rows)
    {
        frame.addView(new FieldView({30, y, 230, y + 20}, row.state));
        frame.addView(new Sketch({244, y, 420, y + 20},
                                 [caption = row.caption](CDrawContext& context) {
                                     drawCaption(context, caption, {0, 0, 176, 20});
                                 }));
        y += 30.0;
    }
}
}

void fillMenus(CFrame& frame)
{
    frame.addView(menuView({30, 60, 280, 250}, fillPresets, 0, 4));
    frame.addView(menuView({320, 60, 460, 250}, fillTimes, 0, -1));
    frame.addView(menuView({480, 60, 632, 250}, fillTimes, 2, 3));
    addFields(frame);
    const auto menu = new Menu(0, {440, 290});
    fillPresets(*menu);
    frame.addView(new MenuButton({440, 262, 610, 290}, *menu));
    frame.addView(new FieldButton({440, 302, 610, 330}, "click to type"));
}
}
