// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/parts/MenuRows.h"
#include "Tovrane/platform/x11/overlays/X11OptionMenu.h"
#include "windows/OtherProgram.h"
#include "windows/PlainMenu.h"
#include "windows/WindowTest.h"

using namespace Tovra;

namespace
{
constexpr int menuX = 20; // in the frame
constexpr int menuY = 30;

// Opens the menu when the frame is clicked, and then takes one step of a list whenever the menu stands still.
class X11OptionMenuTest : public WindowTest
{
protected:
    X11OptionMenuTest()
    {
        openFrame();
        menu.position = CPoint(menuX, menuY);
        menu.add("First", CMenuItem::kChecked);
        menu.add("Second", 0)->setKey("d", kKeyCommand | kKeyShift);
        menu.add("", CMenuItem::kSeparator);
        menu.add("Off", CMenuItem::kDisabled);
        below = &menu.addSubmenu("More");
        below->add("Inner", 0);
        below->add("Deep", 0);
        menu.add("Last 50 %d", 0);
        view->reaction = [this](const std::string& word)
        {
            if (word == "down")
                open();
        };
    }

    // Rows of the main menu by the middle of their height.
    static int rowY(int row)
    {
        const int separators = row > 2 ? 1 : 0;
        return menuY + MenuRows::margin + (row - separators) * MenuRows::rowHeight +
               separators * MenuRows::separatorHeight + 10;
    }

    void open() { open(menu); }
    void open(IMenu& shown)
    {
        const auto popUp = Kept<IOptionMenu>::adopt(window().createOptionMenu(frame));
        popUp->openMenu(shown,
                        [this](const MenuChoice& chosen)
                        {
                            choice = chosen;
                            ++answers;
                        });
    }

    // What the user does with the frame and the menu that opens. The answer is the chosen entry, -1 for none,
    // and 100 more for an entry of the submenu. A step that begins with + waits for the submenu.
    long choose(const std::vector<std::string>& steps)
    {
        answers = 0;
        choice = {nullptr, -7};
        std::size_t next = 0;
        RepeatingTimer hand;
        std::optional<ChildProcess> tool;
        hand.start(60,
                   [&]
                   {
                       if (tool && tool->isRunning())
                           return;
                       if (next >= steps.size())
                           return;
                       const std::string& step = steps[next];
                       const bool isBelow = step.front() == '+';
                       if (openMenus() < (isBelow ? 2 : std::min<int>(int(next), 1)))
                           return;
                       ++next;
                       EXPECT_TRUE(
                           tool.emplace().start(wordsOf("xdotool " + step.substr(isBelow ? 1 : 0)), {}));
                   });
        RepeatingTimer guard; // a menu that stays open for ever
        guard.start(10000,
                    [this]
                    {
                        ADD_FAILURE() << "the menu did not close";
                        closeFrame();
                    });
        EXPECT_TRUE(until([this] { return answers > 0; }));
        EXPECT_EQ(answers, 1);
        hand.stop();
        EXPECT_TRUE(until([&] { return !tool || !tool->isRunning(); }));
        if (choice.menu == nullptr)
            return choice.index;
        return choice.index + (choice.menu == below ? 100 : 0);
    }

    static std::string at(int x, int y)
    {
        return "mousemove " + std::to_string(left + x) + " " + std::to_string(top + y);
    }
    bool isOpen() const { return openMenus() > 0; }
    int openMenus() const { return int(panels().size()); }

    PlainMenu menu;
    PlainMenu* below = nullptr;
    MenuChoice choice;
    int answers = 0; // since choose began
};

const std::string press = " click 1";
}

TEST_F(X11OptionMenuTest, IsChosenFromWithTheMouse)
{
    const std::string start = at(5, 5) + press;
    const std::string toMore = at(40, rowY(4));
    const struct
    {
        const char* what;
        std::vector<std::string> steps;
        long expected;
    } cases[] = {
        {"a click", {start, at(40, rowY(1)) + press}, 1},
        {"press, drag and let go", {at(5, 5) + " mousedown 1", at(40, rowY(5)) + " mouseup 1"}, 5},
        {"a disabled row does nothing", {start, at(40, rowY(3)) + press, at(40, rowY(0)) + press}, 0},
        {"beside it", {start, at(260, 180) + press}, -1},
        {"a submenu by standing on its row", {start, toMore, "+" + at(230, rowY(5)) + press}, 101},
        {"a submenu by a click", {start, toMore + press, at(230, rowY(5)) + press}, 101},
    };
    for (const auto& one : cases)
        EXPECT_EQ(choose(one.steps), one.expected) << one.what;
}

TEST_F(X11OptionMenuTest, IsChosenFromWithTheKeyboard)
{
    const std::string start = at(5, 5) + press;
    const struct
    {
        const char* keys;
        long expected;
    } cases[] = {
        {"key Down key Down key Down key Right key Down key Return", 101},
        {"key m key Right key Left key Up key Return", 1},
        {"key m key Return key Return", 100},
        {"key l key space", 5},
        {"key Escape", -1},
        {"key m key Right key Escape", -1},
    };
    for (const auto& one : cases)
        EXPECT_EQ(choose({start, one.keys}), one.expected) << one.keys;
    settle();
    for (const std::string& entry : log)
        EXPECT_FALSE(entry.starts_with("key") || entry.starts_with("up"))
            << "the views got a key of the menu";
    EXPECT_TRUE(host->lines.empty()) << "the host got " << host->lines[0];
}

TEST_F(X11OptionMenuTest, ReleasesTheClickThatOpenedIt)
{
    view->answers["down"] = kMouseHandled;
    EXPECT_EQ(choose({at(5, 5) + " mousedown 1", at(40, rowY(5)) + " mouseup 1"}), 5);
    EXPECT_EQ(
        std::count_if(log.begin(), log.end(), [](const auto& entry) { return entry.starts_with("view up"); }),
        1);
}

TEST_F(X11OptionMenuTest, ClosesWhenItsWindowOrItsGrabIsLost)
{
    std::optional<X11Window> cover;
    OtherProgram other;
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"the panel is hidden", [&] { xcb_unmap_window(observer->xcb(), panels().back()); }},
        {"the panel is destroyed", [&] { xcb_destroy_window(observer->xcb(), panels().back()); }},
        {"the panel is covered",
         [&]
         {
             cover.emplace(observer, other, X11Window::popUp, 0, X11Place{0, 0, 1024, 768});
             cover->show();
         }},
        {"a click comes to the frame",
         [&]
         {
             xcb_button_press_event_t pressed{};
             pressed.response_type = XCB_BUTTON_PRESS;
             pressed.detail = 1;
             pressed.event = window().windowId();
             other.send(window().windowId(), pressed);
         }},
        {"the frame's window is hidden", [&] { xcb_unmap_window(observer->xcb(), window().windowId()); }},
        {"the frame is closed", [&] { closeFrame(); }},
        {"the host's window is destroyed", [&] { host->command("destroy"); }},
    };
    for (const auto& [what, act] : ends)
    {
        closeFrame();
        openFrame();
        view->reaction = [this](const std::string& word) { return word == "down" ? open() : void(); };
        bool hasActed = false;
        RepeatingTimer end;
        end.start(50,
                  [&]
                  {
                      if (hasActed || !isOpen())
                          return;
                      hasActed = true;
                      act();
                      observer->flush();
                  });
        EXPECT_EQ(choose({at(5, 5) + press}), -1) << what;
        EXPECT_TRUE(hasActed) << what;
        cover.reset();
    }
    EXPECT_FALSE(window().isOpen());
    answers = 0;
    open();
    EXPECT_EQ(answers, 1) << "it cannot open";
    EXPECT_EQ(choice.index, -1);
}

TEST_F(X11OptionMenuTest, ScrollsWhenItIsHigherThanTheScreen)
{
    PlainMenu high;
    for (int i = 0; i < 100; ++i)
        high.add(("Row " + std::to_string(i)).c_str(), 0);
    view->reaction = [&](const std::string& word)
    {
        if (word == "down")
            open(high);
    };
    EXPECT_EQ(choose({at(5, 5) + press, "key Up key Up key Return"}), 98);
}

// As a window manager has it for a moment, or another program for long.
TEST_F(X11OptionMenuTest, WaitsAWhileForTheMouse)
{
    for (const bool comesBack : {true, false})
    {
        EXPECT_TRUE(takeMouse());
        bool isOurs = false;
        RepeatingTimer giver;
        if (comesBack)
            giver.start(25,
                        [&]
                        {
                            isOurs = !takeMouse();
                            giveMouseBack();
                            if (isOurs)
                                closeFrame();
                        });
        answers = 0;
        open();
        EXPECT_EQ(answers, 0) << "it answers later";
        EXPECT_TRUE(until([this] { return answers == 1; }));
        EXPECT_EQ(isOurs, comesBack);
        EXPECT_EQ(choice.index, -1);
        giver.stop();
        giveMouseBack();
        closeFrame();
        openFrame();
    }
}
