#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/parts/MenuRows.h"
#include "Tovrane/platform/x11/X11OptionMenu.h"
#include "windows/PlainMenu.h"
#include "windows/WindowTest.h"

using namespace Tovra;

namespace
{
constexpr int menuX = 20; // in the frame
constexpr int menuY = 30;

// Opens the menu when the frame is clicked, and then does one thing of a list each time the menu stands
// still.
class X11OptionMenuTest : public WindowTest
{
protected:
    X11OptionMenuTest()
    {
        openFrame();
        menu.position = CPoint(menuX, menuY);
        menu.add("First", CMenuItem::kChecked);
        menu.add("Second", 0)->setKey("d", kKeyControl | kKeyShift);
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

    void open()
    {
        const auto popUp = Kept<IOptionMenu>::adopt(window().createOptionMenu(frame));
        choice = popUp->openMenu(menu);
        isOver = true;
    }

    // Does what the user does with the frame and the menu that opens, and answers the choice: the entry, -1
    // for none, 100 more for an entry of the submenu. A step that begins with + waits for the submenu.
    long choose(const std::vector<std::string>& steps)
    {
        isOver = false;
        choice = {nullptr, -7};
        std::size_t next = 0;
        RepeatingTimer hand; // runs in the menu's loop as well
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
        EXPECT_TRUE(until([this] { return isOver; }));
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
    // Windows on the screen that are not the host's.
    int openMenus() const
    {
        xcb_connection_t* c = observer->xcb();
        const X11Reply<xcb_query_tree_reply_t> tree{
            xcb_query_tree_reply(c, xcb_query_tree(c, observer->screen().root), nullptr)};
        int count = 0;
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i)
        {
            const xcb_window_t child = xcb_query_tree_children(tree.get())[i];
            const X11Reply<xcb_get_window_attributes_reply_t> about{
                xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, child), nullptr)};
            if (child != host->window() && about && about->map_state == XCB_MAP_STATE_VIEWABLE)
                ++count;
        }
        return count;
    }

    PlainMenu menu;
    PlainMenu* below = nullptr;
    MenuChoice choice;
    bool isOver = false;
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
        {"nor does a separator", {start, at(40, rowY(2) - 6) + press, at(40, rowY(0)) + press}, 0},
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
        {"key Down key Return", 0},
        {"key Down key Down key Down key Right key Down key Return", 101},
        {"key Up key space", 5},
        {"key m key Right key Left key Down key Return", 5},
        {"key End key Home key Down key Return", 1},
        {"key m key Return key Return", 100},
        {"key o key Return key Down key Return", 0}, // the disabled row is never reached
        {"key Escape", -1},
        {"key m key Right key Escape key Escape", -1},
    };
    for (const auto& one : cases)
        EXPECT_EQ(choose({start, one.keys}), one.expected) << one.keys;
    EXPECT_FALSE(saw("key 0 4 0")) << "the frame got a key of the menu";
}

TEST_F(X11OptionMenuTest, ClosesWithItsFrameOrTheHostsWindow)
{
    RepeatingTimer end;
    end.start(50,
              [&]
              {
                  if (isOpen())
                      host->command("destroy");
              });
    EXPECT_EQ(choose({at(5, 5) + press}), -1);
    end.stop();
    EXPECT_FALSE(window().isOpen());
    open();
    EXPECT_EQ(choice.index, -1);
}

TEST_F(X11OptionMenuTest, ClosesWhenItsFrameIsClosedByATimer)
{
    RepeatingTimer end;
    end.start(50,
              [&]
              {
                  if (isOpen() && frame != nullptr)
                      closeFrame();
              });
    EXPECT_EQ(choose({at(5, 5) + press}), -1);
    EXPECT_EQ(frame, nullptr);
    EXPECT_FALSE(isOpen());
}

TEST_F(X11OptionMenuTest, ScrollsWhenItIsHigherThanTheScreen)
{
    PlainMenu high;
    for (int i = 0; i < 100; ++i)
        high.add(("Row " + std::to_string(i)).c_str(), 0);
    view->reaction = [&](const std::string& word)
    {
        if (word != "down")
            return;
        const auto popUp = Kept<IOptionMenu>::adopt(window().createOptionMenu(frame));
        choice = popUp->openMenu(high);
        isOver = true;
    };
    EXPECT_EQ(choose({at(5, 5) + press, "key Up key Up key Return"}), 98);
}

TEST_F(X11OptionMenuTest, IsOneAtATimeAndNeedsTheMouse)
{
    MenuChoice inner{nullptr, -7};
    RepeatingTimer second;
    second.start(50,
                 [&]
                 {
                     const auto popUp = Kept<IOptionMenu>::adopt(window().createOptionMenu(frame));
                     if (isOpen() && inner.index == -7)
                         inner = popUp->openMenu(menu);
                 });
    EXPECT_EQ(choose({at(5, 5) + press, "mousemove_relative 1 1", "mousemove_relative 1 1", "key Escape"}),
              -1);
    second.stop();
    EXPECT_EQ(inner.index, -1);
    xcb_connection_t* c = observer->xcb();
    const auto asked = xcb_grab_pointer(c, 0, observer->screen().root, 0, XCB_GRAB_MODE_ASYNC,
                                        XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const X11Reply<xcb_grab_pointer_reply_t> grabbed{xcb_grab_pointer_reply(c, asked, nullptr)};
    EXPECT_EQ(grabbed->status, XCB_GRAB_STATUS_SUCCESS);
    open();
    EXPECT_EQ(choice.index, -1) << "somebody else has the mouse";
    xcb_ungrab_pointer(c, XCB_CURRENT_TIME);
    observer->flush();
}
