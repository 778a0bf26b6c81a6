// SPDX-License-Identifier: GPL-3.0-or-later
// How long a host's event loop is held while a menu is open over a plug-in's window.
//
//   script/test_windows build/release/bench/overlays_hold
//
// The program is the host: it owns the loop, and looks at the time whenever the loop stops waiting and when
// it waits again. What lies between is time in which a host could do nothing else. In each of 200 openings
// the mouse moves over the rows and the views go on painting.
#include "Tovrane/base/Answer.h"
#include "Tovrane/base/Clock.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/platform/x11/frame/X11TopLevel.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IOptionMenu.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <poll.h>
#include <string>
#include <vector>
#include <xcb/xcb.h>

using namespace Tovra;

namespace
{
using Milliseconds = std::vector<double>;

double now()
{
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

// Writes down how long the loop was busy between two waits.
class WatchedClock : public Clock
{
public:
    std::int64_t microseconds() override { return std::int64_t(now() * 1000.0); }
    int wait(pollfd* descriptors, unsigned long count, int milliseconds) override
    {
        held.push_back(now() - busySince);
        const int ready = poll(descriptors, count, milliseconds);
        busySince = now();
        return ready;
    }
    Milliseconds held;

private:
    double busySince = now();
};

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

void report(const char* what, Milliseconds values)
{
    std::sort(values.begin(), values.end());
    const auto at = [&](double share) { return values[std::size_t(share * double(values.size() - 1))]; };
    std::printf("%-26s %6zu times  median %7.3f ms  99 %% %7.3f ms  longest %7.3f ms\n", what, values.size(),
                at(0.5), at(0.99), at(1.0));
}
}

int main()
{
    WatchedClock clock;
    Clock::setCurrent(&clock);
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
    clock.held.clear();
    loop.runFor(2000);
    report("no menu", clock.held);

    Milliseconds opening;
    Milliseconds open;
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
        waitForAnswer<MenuChoice>(loop,
                                  [&](auto done)
                                  {
                                      const double start = now();
                                      popUp->openMenu(*menu.get(), done);
                                      opening.push_back(now() - start);
                                      clock.held.clear();
                                  });
        // The first one still holds the opening.
        open.insert(open.end(), clock.held.begin() + 1, clock.held.end());
    }
    report("openMenu, until it returns", opening);
    report("a menu is open", open);
    frame->close();
    Clock::setCurrent(nullptr);
    return 0;
}
