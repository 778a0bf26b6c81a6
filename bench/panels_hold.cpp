// SPDX-License-Identifier: GPL-3.0-or-later
// How long a host's event loop is held while a question or a file panel is open over a plug-in's window.
//
//   script/test_windows build/release/bench/panels_hold
//
// The views go on painting all of a 600 by 350 frame 30 times a second. The file panels are those that the
// machine has: with a session bus and a portal on it the portal's, else zenity's; and zenity's again after a
// bus that accepts nobody.
#include "Sonvex/MessageBox.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/platform/x11/frame/X11TopLevel.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IFileSelector.h"
#include "bench/HeldLoop.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Tovra;

namespace
{
class Host
{
public:
    explicit Host(void* parent)
        : frame(Kept<CFrame>::adopt(new CFrame(CRect(0, 0, 600, 350), parent, nullptr)))
    {
        idle.start(33,
                   [this]
                   {
                       frame->setDirty(true);
                       frame->idle();
                   });
    }
    ~Host() { frame->close(); }

    // The mouse moves over the question until it is answered.
    void askOften(int times)
    {
        for (int i = 0; i < times; ++i)
        {
            bool isAnswered = false;
            Sonvex::openMessageBox(frame.get(), Sonvex::kMessageBoxYesNo, "Delete Preset",
                                   "Do you really want to delete \"Off-beat breath\" ?",
                                   [&](int) { isAnswered = true; });
            for (int moves = 0; moves < 40; ++moves)
            {
                CPoint where(200.0 + 6.0 * moves, 190.0);
                frame->onMouseMoved(where, 0);
                loop.runFor(5);
            }
            if (auto* const question = dynamic_cast<CMessageView*>(frame->getModalView()))
                question->answer(1);
            loop.runUntil([&] { return isAnswered; });
        }
    }

    // Each panel is open for so long, and then closed.
    void openPanels(int times, int milliseconds)
    {
        for (int i = 0; i < times; ++i)
        {
            bool isAnswered = false;
            const auto panel = Kept<IFileSelector>::adopt(frame->createFileSelector());
            panel->run({FileSelectorOptions::openFiles, "Open", {{"Presets", "dks"}}, "/tmp", ""},
                       [&](const std::vector<std::string>&) { isAnswered = true; });
            loop.runFor(milliseconds);
            panel->cancel();
            loop.runUntil([&] { return isAnswered; });
        }
    }

    HeldLoop held;
    PollRunLoop& loop = *static_cast<PollRunLoop*>(RunLoop::current());
    Kept<CFrame> frame;
    RepeatingTimer idle;
};

// A session bus that accepts nobody, and has room for nobody.
void useHangingBus(const std::string& path)
{
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    path.copy(place.sun_path, sizeof place.sun_path - 1);
    const auto* const at = reinterpret_cast<const sockaddr*>(&place);
    const int listening = socket(AF_UNIX, SOCK_STREAM, 0);
    if (bind(listening, at, sizeof place) != 0 || listen(listening, 0) != 0)
        std::perror(path.c_str());
    while (connect(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0), at, sizeof place) == 0)
    {
    }
    setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + path).c_str(), 1);
}
}

int main()
{
    PollRunLoop loop;
    RunLoop::enter(loop);
    useX11Frames();
    useMessageViews();
    setenv("NO_AT_BRIDGE", "1", 1);
    const auto desktop = X11TopLevel::open("Host", 600, 350);
    if (desktop == nullptr)
        return std::fputs("panels_hold: no X server\n", stderr), 2;
    Host host(desktop->parent());
    loop.runFor(500);
    host.held.report("(starting)");
    loop.runFor(2000);
    host.held.report("nothing is open");
    host.askOften(20);
    host.held.report("a question, opened and answered 20 times");
    host.openPanels(10, 1000);
    host.held.report("a file panel, opened and closed 10 times");
    char folder[] = "/tmp/panels_holdXXXXXX";
    useHangingBus(std::string(mkdtemp(folder)) + "/bus");
    host.openPanels(2, 7000);
    host.held.report("the same twice on a bus that hangs");
    unlink((std::string(folder) + "/bus").c_str());
    rmdir(folder);
    return 0;
}
