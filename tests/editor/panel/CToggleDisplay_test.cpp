// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/base/VirtualClock.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/tree/EditLog.h"
#include "editor/panel/CToggleDisplay.h"
#include "editor/panel/CToggleDisplayDial.h"
#include "editor/panel/CToggleDisplayOptionmenu.h"
#include "effect/parameters/DKS_Mini.h"

#include <gtest/gtest.h>

using namespace Tovra;

namespace
{
class TogglePanel : public testing::Test
{
protected:
    TogglePanel()
    {
        RunLoop::enter(loop);
        for (const Orbel::ParameterPropertySetup& row : DKS_Mini::ps_plain)
            manager.CreateProperty(&row);
        panel = new CToggleDisplay({0.0, 0.0, 120.0, 250.0}, {577.0, 52.0}, {475.0, 52.0}, manager, &host);
        frame->addView(panel);
    }
    ~TogglePanel() override
    {
        frame->close();
        frame->forget();
    }
    WindowEvents& user() { return HeadlessFrame::of(*frame)->events(); }
    // After so many milliseconds.
    float slideAfter(int milliseconds)
    {
        loop.runFor(milliseconds);
        return panel->getSlide();
    }

    VirtualClock clock;
    PollRunLoop loop;
    Orbel::CPropertyManager manager;
    Host host;
    ReadOutFrame* frame = new ReadOutFrame({0.0, 0.0, 600.0, 350.0}, nullptr, &host);
    CToggleDisplay* panel; // the frame's
};
}

TEST_F(TogglePanel, SlidesInUnderTheMouseAndOutAfterAWait)
{
    EXPECT_EQ(panel->getViewSize(), CRect(577.0, 52.0, 697.0, 302.0));
    EXPECT_FALSE(loop.runOnce(-1)) << "at rest it has no timer";
    user().move({590.0, 100.0}, 0);
    const float halfWay = slideAfter(45);
    EXPECT_GT(halfWay, 0.2f);
    EXPECT_LT(halfWay, 0.9f);
    EXPECT_EQ(slideAfter(60), 1.0f) << "80 ms and the ticks of a timer";
    EXPECT_EQ(panel->getViewSize().left, 475.0);
    EXPECT_FALSE(loop.runOnce(-1));
    user().move({300.0, 100.0}, 0);
    EXPECT_EQ(slideAfter(340), 1.0f) << "it waits";
    EXPECT_LT(slideAfter(100), 0.9f);
    EXPECT_EQ(slideAfter(100), 0.0f);
    EXPECT_FALSE(loop.runOnce(-1));

    // A drag that leaves the panel keeps it open until its end.
    user().move({590.0, 100.0}, 0);
    slideAfter(200);
    const CPoint dial(475.0 + 36.0, 52.0 + 31.25 * 2.0 + 15.0); // Strength
    user().move(dial, 0);
    user().press(dial, kButtonLeft);
    user().move({300.0, dial.y + 20.0}, kButtonLeft);
    EXPECT_EQ(slideAfter(1000), 1.0f);
    user().release({300.0, dial.y + 20.0}, kButtonLeft);
    EXPECT_FLOAT_EQ(manager.getPropertyByID(DKS_Mini::kStrength)->getCurrentValue(), 0.9f);
    EXPECT_EQ(slideAfter(1000), 0.0f);
    panel->shut();
}

TEST_F(TogglePanel, TakesClicksOnItsGroundAndOffersTheTimeBases)
{
    struct Below : CView
    {
        using CView::CView;
        MouseEventResult onMouseDown(CPoint&, const long&) override { return ++clicks, kMouseHandled; }
        int clicks = 0;
    };
    auto* const below = new Below({400.0, 0.0, 600.0, 350.0});
    frame->addView(below, static_cast<CView*>(panel));
    user().move({590.0, 60.0}, 0);
    slideAfter(200);
    user().press({485.0, 200.0}, kButtonLeft);
    user().release({485.0, 200.0}, kButtonLeft);
    EXPECT_EQ(below->clicks, 0);

    panel->setTimeAdjust(7, 2.0f / 3.0f);
    const CPoint menu(475.0 + 80.0, 52.0 + 20.0);
    user().move(menu, 0);
    EXPECT_EQ(frame->texts.back(), "Time Base: 1/4T");
    std::vector<std::string> titles;
    HeadlessFrame::of(*frame)->onMenu = [&titles](IMenu& opened) -> MenuChoice
    {
        for (long row = 0; row < opened.getNbEntries(); ++row)
        {
            const CMenuItem& item = *opened.getEntry(row);
            titles.push_back(
                item.isSeparator() ? "-" : (item.isChecked() ? "* " : "") + std::string(item.getTitle()));
        }
        return {&opened, 12}; // the rows before it are eleven time bases and a separator
    };
    user().press(menu, kButtonLeft);
    user().release(menu, kButtonLeft);
    ASSERT_EQ(titles.size(), 17u);
    EXPECT_EQ(titles[5], "-");
    EXPECT_EQ(titles[8], "* 1/4T");
    EXPECT_EQ(titles[11], "-");
    user().move({menu.x + 1.0, menu.y}, 0);
    panel->setTimeAdjust(-1, 0.7f);
    user().move(menu, 0);
    EXPECT_EQ(frame->texts.back(), "Time Base: 0.7");
}

TEST_F(TogglePanel, HasADetentOnlyWithinTheRange)
{
    CToggleDisplayDial& dial = *panel->getReleaseDial();
    for (const auto& [centre, isOn] : {std::pair(0.5f, true), {-0.1f, false}, {1.1f, false}})
    {
        dial.setSnapPoint(centre);
        dial.setUseSnap(true);
        EXPECT_EQ(dial.deadZone().isOn, isOn) << centre;
    }
}
