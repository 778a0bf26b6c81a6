// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/views/envelope/Tovra_EnvelopeDisplay.h"
#include "Tovrane/views/tree/EditLog.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Tovra;
using Orbel::ParameterProperty;

namespace
{
// An inner rectangle of 400 by 100 units at (10.5, 10.5); times up to 1000 ms, one unit is 2.5 ms.
struct Display : Tovra_EnvelopeDisplay
{
    using Tovra_EnvelopeDisplay::preCalculateDraw;
    using Tovra_EnvelopeDisplay::settle;
    using Tovra_EnvelopeDisplay::Tovra_EnvelopeDisplay;
};

class EnvelopeDisplay : public testing::Test
{
protected:
    EnvelopeDisplay()
    {
        setUp(attack, 1000.0f, 250.0f, Orbel::ParameterUnitType::Milliseconds);
        setUp(level, 1.0f, 0.5f, Orbel::ParameterUnitType::SignedPercent);
        setUp(bend, 5.0f, 0.0f, Orbel::ParameterUnitType::PlainNumber);
        bend.setMin(-5.0f);
        setUp(release, 1000.0f, 500.0f, Orbel::ParameterUnitType::Milliseconds);
        Tovra_EnvelopeDisplay::CInfo info;
        info.rect = CRect(0.0, 0.0, 421.0, 121.0);
        display = new Display(info);
        CEnvelopePoint start, top, end;
        top.type = end.type = CEnvelopePoint::free;
        top.timeProperty = &attack;
        top.levelProperty = &level;
        top.curveProperty = &bend;
        end.timeProperty = &release;
        for (const CEnvelopePoint& point : {start, top, end})
            display->addEnvelopePoint(point);
        frame->addView(display);
        display->setDisplayTime(1000.0f);
        display->preCalculateDraw(1);
    }
    ~EnvelopeDisplay() override
    {
        frame->close();
        frame->forget();
    }
    static void setUp(ParameterProperty& property, float high, float value, Orbel::ParameterUnitType unit)
    {
        property.setMax(high);
        property.setUnitType(unit);
        property.setDefaultValue(value);
        property.setValue(value);
    }
    WindowEvents& user() { return HeadlessFrame::of(*frame)->events(); }
    void drag(CPoint from, CPoint to, long modifiers = 0)
    {
        user().move(from, modifiers);
        user().press(from, kButtonLeft | modifiers);
        user().move(to, kButtonLeft | modifiers);
        user().release(to, kButtonLeft | modifiers);
    }
    CPoint placeOf(int point)
    {
        display->settle();
        const CPoint& place = display->getEnvelopePointFromIndex(point)->place;
        return {10.5 + place.x, 10.5 + place.y};
    }

    ParameterProperty attack, level, bend, release;
    Host host;
    ReadOutFrame* frame = new ReadOutFrame({0.0, 0.0, 421.0, 121.0}, nullptr, &host);
    Display* display; // the frame's
};
}

TEST_F(EnvelopeDisplay, StandsWhereItsParametersAre)
{
    EXPECT_EQ(display->getNumEnvelopePoints(), 4) << "a knob before the first moving point";
    EXPECT_EQ(placeOf(2), CPoint(110.5, 60.5));
    EXPECT_EQ(placeOf(3), CPoint(310.5, 110.5));
    EXPECT_NEAR(placeOf(1).x, 50.5, 1e-5) << "two fifths of the way";
    EXPECT_NEAR(placeOf(1).y, 90.5, 1e-5);
    attack.setValue(300.0f);
    EXPECT_EQ(placeOf(3).x, 330.5) << "what comes later moves along";
    attack.setValue(700.0f);
    EXPECT_NEAR(placeOf(3).x, 410.5 - 20.0 * 1000.0 / 1250.0, 1e-3)
        << "what would leave the display is fitted";
    for (const auto& [tempo, kept] : {std::pair(5.0f, 10.0f), {2000.0f, 1000.0f}, {NAN, 1000.0f}})
    {
        display->setTempo(tempo);
        EXPECT_EQ(display->getTempo(), kept);
    }
    display->setEnvelopePosition(2, 1.5f);
    display->clearPoints();
    attack.setValue(1.0f);
    EXPECT_EQ(display->getEnvelopePointFromIndex(0), nullptr);
}

TEST_F(EnvelopeDisplay, WritesOneGestureForEachParameterOfAPoint)
{
    drag({110.5, 60.5}, {150.5, 40.5});
    EXPECT_EQ(attack.getCurrentValue(), 350.0f);
    EXPECT_FLOAT_EQ(level.getCurrentValue(), 0.7f);
    EXPECT_EQ(taken(host.log), Log({"host begins", "host begins", "host performs 0.700000",
                                    "host performs 350.000000", "host ends", "host ends"}));
    const CPoint at = placeOf(2);
    drag(at, at);
    EXPECT_EQ(taken(host.log), Log({"host begins", "host begins", "host ends", "host ends"}))
        << "a click writes nothing";
    EXPECT_EQ(frame->texts.back(), ": 350.0ms / : 70.00%") << "without names";
    user().move({200.0, 100.0}, 0);
    EXPECT_EQ(frame->texts.back(), "") << "off the handle";

    user().move(at, 0);
    user().press(at, kButtonMiddle);
    user().release(at, kButtonMiddle);
    EXPECT_EQ(taken(host.log), Log({"host begins", "host performs 0.500000", "host ends"}));
    host.log.clear();
    user().press(placeOf(3), kButtonMiddle); // has no level
    user().release(placeOf(3), kButtonMiddle);
    EXPECT_EQ(taken(host.log), Log());
}

TEST_F(EnvelopeDisplay, DragsOneAxisFinelyAndStaysInBounds)
{
    const struct
    {
        const char* what;
        CPoint to;
        long modifiers;
        float time, value;
    } drags[] = {
        {"shift", {200.5, 40.5}, kModShift, 250.0f, 0.51f},
        {"alt", {130.5, 20.5}, kModAlt, 260.0f, 0.5f},
        {"beyond the left edge", {-300.0, 60.5}, 0, 0.0f, 0.5f},
        {"beyond the corner", {900.0, -900.0}, 0, 1000.0f, 1.0f},
    };
    for (const auto& each : drags)
    {
        attack.setValue(250.0f);
        level.setValue(0.5f);
        drag(placeOf(2), each.to, each.modifiers);
        EXPECT_FLOAT_EQ(attack.getCurrentValue(), each.time) << each.what;
        EXPECT_FLOAT_EQ(level.getCurrentValue(), each.value) << each.what;
        display->setDisplayTime(1000.0f);
    }
    attack.setValue(250.0f);
    drag(placeOf(3), {20.0, 110.5}); // left of its predecessor
    EXPECT_EQ(release.getCurrentValue(), 0.0f);
}

TEST_F(EnvelopeDisplay, BendsASegmentWithoutAJumpWhenShiftIsPressed)
{
    const CPoint knob = placeOf(1);
    user().move(knob, 0);
    EXPECT_EQ(HeadlessFrame::of(*frame)->cursor(), kCursorVSize);
    user().press(knob, kButtonLeft);
    const auto bentAt = [&](double up, long buttons)
    {
        user().move({knob.x, knob.y - up}, buttons);
        return std::round(bend.getCurrentValue_normalized() * 10000.0f) / 10000.0f;
    };
    // The segment rises, so that up is less: the line goes where the mouse goes.
    EXPECT_FLOAT_EQ(bentAt(20.0, kButtonLeft), 0.4f);
    EXPECT_FLOAT_EQ(bentAt(21.0, kButtonLeft | kModShift), 0.395f)
        << "the step in which it changes is a usual one";
    EXPECT_FLOAT_EQ(bentAt(41.0, kButtonLeft | kModShift), 0.385f);
    EXPECT_FLOAT_EQ(bentAt(42.0, kButtonLeft), 0.3845f);
    EXPECT_FLOAT_EQ(bentAt(62.0, kButtonLeft), 0.3345f);
    user().press(knob, kButtonRight); // a second button changes nothing
    user().release(knob, kButtonRight);
    EXPECT_EQ(host.log.back().substr(0, 13), "host performs");
    display->setVisible(false);
    EXPECT_EQ(host.log.back(), "host ends");
    EXPECT_EQ(std::count(host.log.begin(), host.log.end(), "host begins"), 1);
    EXPECT_EQ(std::count(host.log.begin(), host.log.end(), "host ends"), 1);

    display->setVisible(true);
    user().release(knob, kButtonLeft);
    display->setDisplayCurveKnobs(false);
    display->settle();
    const CPoint on = getCurveCoord({10.5, 110.5}, placeOf(2), bend.getCurrentValue(), 0.7f);
    EXPECT_EQ(display->getEnvelopePointFromCPoint({on.x, on.y + 9.0}), display->getEnvelopePointFromIndex(1));
    EXPECT_EQ(display->getEnvelopePointFromCPoint({on.x, on.y + 11.0}), nullptr);
}

TEST(EnvelopeCurves, BendBetweenTheirEnds)
{
    const struct
    {
        int type;
        float bend, half;
    } cases[] = {{0, 0.0f, 0.5f}, {0, 1.0f, 1.0f / 3.0f}, {0, -1.0f, 2.0f / 3.0f},
                 {1, 0.0f, 0.5f}, {1, 1.0f, 0.25f},       {1, -1.0f, 0.75f},
                 {2, 0.0f, 0.5f}, {2, 1.0f, 0.125f},      {2, -1.0f, 0.875f}};
    for (const auto& each : cases)
    {
        const CurveFamily family = curveFamily(each.type);
        EXPECT_FLOAT_EQ(family.shape(0.5f, each.bend), each.half) << each.type << ' ' << each.bend;
        EXPECT_EQ(family.shape(0.0f, each.bend), 0.0f);
        EXPECT_EQ(family.shape(1.0f, each.bend), 1.0f);
        EXPECT_EQ(family.coordinate({10.0, 20.0}, {30.0, 40.0}, each.bend, 0.25f).x, 15.0);
    }
    EXPECT_EQ(get_Exp_ASC_pow(1e-20f, 1.0f), 0.0f) << "a subnormal result";
}
