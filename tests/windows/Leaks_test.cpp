// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/Answer.h"
#include "Tovrane/platform/x11/overlays/X11OptionMenu.h"
#include "Tovrane/window/IOSTextEdit.h"
#include "windows/FieldOwner.h"
#include "windows/PlainMenu.h"
#include "windows/WindowTest.h"

#include <filesystem>
#include <fstream>
#include <malloc.h>

using namespace Tovra;

namespace
{
class LeaksTest : public WindowTest
{
protected:
    // A frame with a text field and a menu that a timer closes again.
    void openAndClose()
    {
        openFrame();
        PlainMenu menu;
        menu.add("One", 0);
        menu.addSubmenu("Two").add("Three", 0);
        {
            FieldOwner callback;
            const std::unique_ptr<IOSTextEdit> field(window().createPlatformTextEdit(frame, &callback, view));
            field->setText("text");
            window().clipboard().offer(X11Clipboard::copied, "text");
            const auto popUp =
                Kept<X11OptionMenu>::adopt(dynamic_cast<X11OptionMenu*>(window().createOptionMenu(frame)));
            RepeatingTimer close;
            close.start(1, [&] { popUp->cancel(); });
            waitForAnswer<MenuChoice>(loop, [&](auto done) { popUp->openMenu(menu, done); });
            window().setMouseCursor(kCursorHand);
        }
        closeFrame();
    }

    void openAndClose(int times)
    {
        for (; times > 0; --times)
            openAndClose();
        log.clear();
    }

    static std::size_t descriptors()
    {
        using Walk = std::filesystem::directory_iterator;
        return std::size_t(std::distance(Walk("/proc/self/fd"), Walk()));
    }
    static std::size_t sharedSegments()
    {
        std::ifstream list("/proc/sysvipc/shm");
        const std::string pid = " " + std::to_string(getpid()) + " ";
        std::size_t count = 0;
        for (std::string line; std::getline(list, line);)
            count += line.find(pid) != std::string::npos ? 1 : 0;
        return count;
    }
    static std::size_t heap() { return mallinfo2().uordblks; }
};
}

TEST_F(LeaksTest, NothingIsLeftOfTwoHundredOpenings)
{
    constexpr int openings = 200;
    openAndClose(2 * openings); // the allocator's own stores are filled by then, too
    EXPECT_TRUE(until([this] { return serverResources() > 0; }));
    const std::size_t resources = serverResources();
    const std::size_t files = descriptors();
    const std::size_t segments = sharedSegments();
    const std::size_t memory = heap();
    openAndClose(openings);
    EXPECT_TRUE(until([&] { return serverResources() <= resources; }))
        << serverResources() << " of " << resources;
    EXPECT_EQ(descriptors(), files);
    EXPECT_EQ(sharedSegments(), segments);
    EXPECT_LT(heap(), memory + 128 * openings) << "more than 128 bytes an opening";
}

TEST_F(LeaksTest, TheCountersCount)
{
    openFrame();
    const std::size_t resources = serverResources();
    const std::size_t files = descriptors();
    const auto another = X11Connection::open();
    another->cursor(kCursorHand);
    another->sync();
    EXPECT_GT(serverResources(), resources);
    EXPECT_EQ(descriptors(), files + 1);
}
