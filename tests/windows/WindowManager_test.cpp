// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/x11/frame/X11TopLevel.h"
#include "Tovrane/window/IOptionMenu.h"
#include "windows/FieldOwner.h"
#include "windows/PlainMenu.h"
#include "windows/WindowTest.h"

using namespace Tovra;

namespace
{
// Two windows on a desktop whose window manager decides who has the focus; a frame lies in the first one.
class WindowManagerTest : public WindowTest
{
protected:
    WindowManagerTest()
    {
        first = X11TopLevel::open("First", width, height);
        second = X11TopLevel::open("Second", width, height);
        EXPECT_TRUE(manager.start({"openbox", "--sm-disable"}, {}));
        const xcb_atom_t state = observer->atomOfName("WM_STATE");
        EXPECT_TRUE(until([&] { return has(numberOf(*first), state) && has(numberOf(*second), state); }));
        openFrame(first->parent());
    }
    ~WindowManagerTest() override { closeFrame(); }

    bool has(xcb_window_t window, xcb_atom_t property) const
    {
        const auto asked = xcb_get_property(observer->xcb(), 0, window, property, XCB_ATOM_ANY, 0, 1);
        const auto reply = observer->reply(xcb_get_property_reply, asked);
        return reply != nullptr && reply->type != XCB_ATOM_NONE;
    }
    static xcb_window_t numberOf(const X11TopLevel& window)
    {
        return xcb_window_t(reinterpret_cast<std::uintptr_t>(window.parent()));
    }
    void activate(const X11TopLevel& window)
    {
        user("windowactivate " + std::to_string(numberOf(window)));
        EXPECT_TRUE(until([&] { return focus() == numberOf(window); }));
    }
    void clickFrame()
    {
        user("mousemove --window " + std::to_string(window().windowId()) + " 10 10 click 1");
        EXPECT_TRUE(until([this] { return focus() == window().windowId(); }));
    }

    ChildProcess manager;
    std::unique_ptr<X11TopLevel> first;
    std::unique_ptr<X11TopLevel> second;
};
}

// Whether the frame itself has the focus or the host keeps it for its own window.
TEST_F(WindowManagerTest, AMenuClosesAndAFieldStaysWhenTheFocusMovesToAnotherWindow)
{
    FieldOwner owner;
    const std::unique_ptr<IOSTextEdit> field(window().createPlatformTextEdit(frame, &owner, view));
    field->setText("before");
    PlainMenu menu;
    menu.add("One", 0);
    for (const bool isClicked : {true, false})
    {
        activate(*first);
        if (isClicked)
            clickFrame();
        std::vector<long> answers;
        Kept<IOptionMenu>::adopt(window().createOptionMenu(frame))
            ->openMenu(menu, [&](const MenuChoice& choice) { answers.push_back(choice.index); });
        settle();
        EXPECT_THAT(answers, testing::IsEmpty());
        activate(*second);
        EXPECT_TRUE(until([&] { return !answers.empty(); }));
        EXPECT_THAT(answers, testing::ElementsAre(-1));
    }
    EXPECT_EQ(owner.ended, "");
    activate(*first);
    clickFrame();
    user("key x");
    EXPECT_TRUE(until([&] { return field->getText() == std::string("x"); }));
}
