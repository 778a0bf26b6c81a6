// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/views/tree/EditLog.h"
#include "editor/panel/Tovra_MiniDial.h"

#include <gtest/gtest.h>

using namespace Tovra;

namespace
{
// A dial at (10, 10), 60 by 19 units.
class MiniDial : public testing::Test
{
protected:
    void open(Orbel::ParameterUnitType unit, float value)
    {
        property.setUnitType(unit);
        property.setDefaultValue(value);
        property.setValue(value);
        Tovra_MiniDial::CInfo info;
        info.rect = CRect(10.0, 10.0, 70.0, 29.0);
        info.attachedProperty = &property;
        info.createObject();
        dial = info.object;
        frame->addView(dial);
    }
    ~MiniDial() override
    {
        frame->close();
        frame->forget();
    }
    WindowEvents& user() { return HeadlessFrame::of(*frame)->events(); }
    Log drag(double up, long buttons)
    {
        host.log.clear();
        user().press(middle, buttons);
        if (up != 0.0)
            user().move({middle.x, middle.y - up}, buttons);
        user().release({middle.x, middle.y - up}, buttons);
        return taken(host.log);
    }

    const CPoint middle{40.0, 20.0};
    Orbel::ParameterProperty property;
    Host host;
    CFrame* frame = new CFrame({0.0, 0.0, 100.0, 60.0}, nullptr, &host);
    CView* dial = nullptr;
};
}

TEST_F(MiniDial, IsDraggedLikeAValueBox)
{
    open(Orbel::ParameterUnitType::SignedPercent, 0.5f);
    drag(20.0, kButtonLeft);
    EXPECT_FLOAT_EQ(property.getCurrentValue(), 0.6f) << "200 units for the whole range";
    drag(20.0, kButtonLeft | kModShift);
    EXPECT_FLOAT_EQ(property.getCurrentValue(), 0.61f) << "2000 with shift";
    EXPECT_EQ(drag(0.0, kButtonMiddle), Log({"host begins", "host performs 0.500000", "host ends"}));
    EXPECT_TRUE(dial->hitTest({9.0, 30.0})) << "a unit beyond its edges";
    EXPECT_FALSE(dial->hitTest({8.9, 20.0}));
}

TEST_F(MiniDial, TurnsASwitchOverAndHasNothingInBetween)
{
    open(Orbel::ParameterUnitType::Switch, 0.0f);
    const Log on = {"host begins", "host performs 1.000000", "host ends"};
    const Log off = {"host begins", "host performs 0.000000", "host ends"};
    EXPECT_EQ(drag(0.0, kButtonLeft), on) << "a click";
    EXPECT_EQ(drag(0.0, kButtonLeft), off);
    EXPECT_EQ(drag(60.0, kButtonLeft), Log({"host begins", "host ends"})) << "not far enough";
    EXPECT_EQ(property.getCurrentValue(), 0.0f);
    EXPECT_EQ(drag(120.0, kButtonLeft), on);
    EXPECT_EQ(drag(-60.0, kButtonLeft), Log({"host begins", "host ends"}))
        << "the next drag begins at its end";
    user().press(middle, kButtonLeft);
    dial->setVisible(false);
    EXPECT_EQ(property.getCurrentValue(), 1.0f) << "a gesture that is called off is no click";
}
