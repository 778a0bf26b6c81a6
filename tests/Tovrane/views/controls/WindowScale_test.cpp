// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/controls/WindowScale.h"
#include "Tovrane/views/tree/RecordingView.h"

#include <memory>

using namespace Tovra;
using testing::ElementsAre;

// A frame whose scale is chosen, and a second window beside it.
class ScaledWindows : public HeadlessTest
{
protected:
    ScaledWindows()
    {
        UserScale::setStorage({[this] { return stored; }, [this](int percent) { stored = percent; }});
    }
    ~ScaledWindows() override { UserScale::setStorage({}); }

    void desktop(double scale)
    {
        window().desktopScale = scale;
        frame->notify(nullptr, IFrame::desktopScaleChanged);
    }
    // What a right click offers, and its answer by index; -1 for none.
    std::vector<std::string> rightClick(CPoint at, long chosen)
    {
        std::vector<std::string> titles;
        window().onMenu = [&](IMenu& menu)
        {
            for (long i = 0; i < menu.getNbEntries(); ++i)
                titles.push_back((menu.getEntry(i)->isChecked() ? "* " : "") + menu.getEntry(i)->getTitle());
            return MenuChoice{&menu, chosen};
        };
        window().events().press(at, kButtonRight);
        window().events().release(at, kButtonRight);
        return titles;
    }

    int stored = 150;
};

TEST_F(ScaledWindows, FollowTheHostOrTheDesktopTimesTheUsersChoice)
{
    std::vector<double> applied;
    WindowScale scale(*frame.get(), [&](double wanted) { applied.push_back(wanted); });
    desktop(2.0);
    scale.setHostScale(1.25); // in place of the desktop's
    desktop(1.5);
    scale.setHostScale(std::nan(""));
    desktop(8.0);
    scale.setHostScale(0.1);
    EXPECT_THAT(applied, ElementsAre(1.5, 3.0, 1.875, 2.25, 4.0, 0.75));
    for (const auto& [value, expected] : {std::pair(300, 300), {0, 100}, {99, 100}, {-75, 100}})
    {
        stored = value;
        UserScale::setStorage({[this] { return stored; }, nullptr});
        EXPECT_EQ(UserScale::percent(), expected) << value;
    }
}

TEST_F(ScaledWindows, AskByARightClickOnEmptyGroundAndChangeAtOnce)
{
    const auto other = Kept<CFrame>::adopt(new CFrame({0, 0, 40, 30}, nullptr, nullptr));
    auto second = std::make_unique<WindowScale>(*other.get(), [&](double s) { other->setScale(s); });
    add("view", {10, 10, 50, 50})->answers["down"] = kMouseHandled;
    {
        WindowScale scale(*frame.get(), [&](double s) { frame->setScale(s); });
        EXPECT_THAT(rightClick({20, 20}, 1), ElementsAre()); // a view took it
        EXPECT_THAT(rightClick({150, 90}, -1), ElementsAre("Window Size", "75 %", "100 %", "125 %", "* 150 %",
                                                           "175 %", "200 %", "250 %", "300 %"));
        EXPECT_EQ(stored, 150);
        rightClick({150, 90}, 6);
        EXPECT_EQ(stored, 200);
        EXPECT_EQ(frame->getScale(), 2.0);
        EXPECT_EQ(other->getScale(), 2.0);
        second.reset();
        rightClick({150, 90}, 1);
        EXPECT_EQ(frame->getScale(), 0.75);
        EXPECT_EQ(other->getScale(), 2.0);
    }
    EXPECT_THAT(rightClick({150, 90}, 1), ElementsAre());
    other->close();
}
