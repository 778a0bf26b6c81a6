// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/WindowScale.h"

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IFrame.h"
#include "Tovrane/window/IMenu.h"
#include "Tovrane/window/IOptionMenu.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace Tovra
{
namespace
{
// Of all windows of the process.
struct Shared
{
    UserScale::Storage storage;
    std::optional<int> percent; // once it was loaded or chosen
    double desktopScale = 1.0;  // as the last window saw it
    std::vector<WindowScale*> windows;
};

Shared& shared()
{
    static Shared all;
    return all;
}

bool isChoice(int percent)
{
    return std::find(std::begin(UserScale::choices), std::end(UserScale::choices), percent) !=
           std::end(UserScale::choices);
}

class ScaleMenu : public CBaseObject, public IMenu
{
public:
    explicit ScaleMenu(const CPoint& at) : place(at)
    {
        add("Window Size", CMenuItem::kTitle);
        for (const int percent : UserScale::choices)
            add(std::to_string(percent) + " %",
                percent == UserScale::percent() ? CMenuItem::kChecked : CMenuItem::kNoFlags);
    }

    long getNbEntries() const override { return long(entries.size()); }
    CMenuItem* getEntry(long index) const override
    {
        return index >= 0 && index < getNbEntries() ? entries[std::size_t(index)].get() : nullptr;
    }
    long getPrefixNumbers() const override { return 0; }
    CPoint getMenuPosition() const override { return place; }
    CBaseObject* countedObject() override { return this; }

private:
    void add(const std::string& title, long flags)
    {
        entries.push_back(Kept<CMenuItem>::adopt(new CMenuItem(title.c_str(), flags)));
    }

    const CPoint place;
    std::vector<Kept<CMenuItem>> entries; // the title, and then the choices
};
}

void UserScale::setStorage(Storage storage)
{
    shared().storage = std::move(storage);
    shared().percent.reset();
}

int UserScale::percent()
{
    Shared& all = shared();
    if (!all.percent)
    {
        const int stored = all.storage.load ? all.storage.load() : 100;
        all.percent = isChoice(stored) ? stored : 100;
    }
    return *all.percent;
}

// A window may go while another one changes.
void UserScale::choose(int percent)
{
    Shared& all = shared();
    if (!isChoice(percent))
        return;
    all.percent = percent;
    if (all.storage.store)
        all.storage.store(percent);
    for (WindowScale* const window : std::vector(all.windows))
        if (std::find(all.windows.begin(), all.windows.end(), window) != all.windows.end())
            window->renew();
}

WindowScale::WindowScale(CFrame& of, std::function<void(double)> applied, double ofHost)
    : frame(of), apply(std::move(applied)), hostScale(ofHost)
{
    shared().windows.push_back(this);
    frame.onDesktopScale = [this] { renew(); };
    frame.onGroundMenu = [this](const CPoint& where) { openMenu(where); };
    renew();
}

WindowScale::~WindowScale()
{
    std::erase(shared().windows, this);
    frame.onDesktopScale = nullptr;
    frame.onGroundMenu = nullptr;
}

double WindowScale::expected(double hostScale)
{
    const bool isTold = std::isfinite(hostScale) && hostScale > 0.0;
    const double outside = isTold ? hostScale : shared().desktopScale;
    return std::clamp(outside * UserScale::percent() / 100.0, smallest, largest);
}

void WindowScale::setHostScale(double pixelsPerUnit)
{
    hostScale = pixelsPerUnit;
    renew();
}

void WindowScale::renew()
{
    shared().desktopScale = frame.getOSFrame()->getDesktopScale();
    const double wanted = expected(hostScale);
    if (wanted == current)
        return;
    current = wanted;
    apply(wanted);
}

void WindowScale::openMenu(const CPoint& where)
{
    const auto menu = Kept<ScaleMenu>::adopt(new ScaleMenu(where));
    const auto popUp = Kept<IOptionMenu>::adopt(frame.createOptionMenu());
    if (popUp)
        popUp->openMenu(*menu.get(),
                        [](const MenuChoice& choice)
                        {
                            if (choice.menu != nullptr && choice.index > 0)
                                UserScale::choose(UserScale::choices[choice.index - 1]);
                        });
}
}
