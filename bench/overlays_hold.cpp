// SPDX-License-Identifier: GPL-3.0-or-later
// How long a host's event loop is held while a menu is open over a plug-in's window.
//
//   script/test_windows build/release/bench/overlays_hold
//
// In each of 200 openings the mouse moves over the rows, and the views go on painting all of a 600 by 350
// frame 30 times a second. The rounds in which a menu opens count, too.
#include "Tovrane/base/Answer.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/platform/x11/frame/X11TopLevel.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IOptionMenu.h"
#include "bench/HeldLoop.h"

#include <string>
#include <vector>
#include <xcb/xcb.h>

using namespace Tovra;

namespace
{
class Menu : public CBaseObject, public IMenu
{
public:
    Menu()
    {
        for (int i = 0; i < 40; ++i)
            items.push_back(new CMenuItem(("Preset number " + std::to_string(i)).c_str(), 0));
    }
    ~Menu() override
    {
        for (CMenuItem* item : items)
            item->forget();
    }
    long getNbEntries() const override { return long(items.size()); }
    CMenuItem* getEntry(long index) const override
    {
        return index >= 0 && index < getNbEntries() ? items[std::size_t(index)] : nullptr;
    }
    long getPrefixNumbers() const override { return 2; }
    CPoint getMenuPosition() const override { return {20, 20}; }
    CBaseObject* countedObject() override { return this; }

private:
    std::vector<CMenuItem*> items;
};
}

int main()
{
    HeldLoop held;
    PollRunLoop loop;
    RunLoop::enter(loop);
    useX11Frames();
    const auto user = X11Connection::open();
    const auto desktop = X11TopLevel::open("Host", 600, 350);
    if (user == nullptr || desktop == nullptr)
        return std::fputs("overlays_hold: no X server\n", stderr), 2;
    const auto frame = Kept<CFrame>::adopt(new CFrame(CRect(0, 0, 600, 350), desktop->parent(), nullptr));
    RepeatingTimer idle;
    idle.start(33,
               [&]
               {
                   frame->setDirty(true);
                   frame->idle();
               });
    const auto menu = Kept<Menu>::adopt(new Menu);
    loop.runFor(500);
    held.report("at the start");
    loop.runFor(2000);
    held.report("no menu");

    for (int turn = 0; turn < 200; ++turn)
    {
        int moves = 0;
        RepeatingTimer hand;
        hand.start(5,
                   [&]
                   {
                       xcb_warp_pointer(user->xcb(), XCB_NONE, user->screen().root, 0, 0, 0, 0, 60,
                                        std::int16_t(40 + moves * 10));
                       xcb_flush(user->xcb());
                       if (++moves == 20) // a click beside it
                           frame->getOSFrame()->releaseMouse();
                   });
        const auto popUp = Kept<IOptionMenu>::adopt(frame->createOptionMenu());
        waitForAnswer<MenuChoice>(loop, [&](auto done) { popUp->openMenu(*menu.get(), done); });
    }
    held.report("a menu opens and is open");
    frame->close();
    return 0;
}
