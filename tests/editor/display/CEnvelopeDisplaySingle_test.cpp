// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/views/tree/CFrame.h"
#include "editor/display/CEnvelopeDisplaySingle.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Tovra;

namespace
{
// The places of the points: x grows by 553 for two quarter notes.
class EnvelopeDisplaySingle : public testing::Test
{
protected:
    EnvelopeDisplaySingle()
    {
        for (const Orbel::ParameterPropertySetup& row : DKS_Mini::ps_plain)
            manager.CreateProperty(&row);
        CEnvelopeDisplaySingle::CInfo info;
        info.rect = CRect(9.0, 48.0, 583.0, 306.0);
        info.propertyManager = &manager;
        info.createObject();
        display = dynamic_cast<CEnvelopeDisplaySingle*>(info.object);
        frame->addView(display);
        set(DKS_Mini::kAttackTime, 93.75f);
        set(DKS_Mini::kHoldTime, 46.875f);
        set(DKS_Mini::kReleaseTime, 187.5f);
        set(DKS_Mini::kStrength, 1.0f);
    }
    ~EnvelopeDisplaySingle() override
    {
        frame->close();
        frame->forget();
    }
    void set(int id, float value) { manager.getPropertyByID(id)->setValue(value); }
    float get(int id) { return manager.getPropertyByID(id)->getCurrentValue(); }
    CPoint placeOf(int index)
    {
        display->getEnvelopePointFromCPoint({-1.0, -1.0}); // computes what is out of date
        return display->getEnvelopePointFromIndex(index)->place;
    }
    void drag(int index, double dx, double dy)
    {
        WindowEvents& user = HeadlessFrame::of(*frame)->events();
        const CRect handle = (placeOf(index), display->getEnvelopePointFromIndex(index)->handle);
        const CPoint from(handle.left + 4.0, handle.top + 4.0), to(from.x + dx, from.y + dy);
        user.press(from, kButtonLeft);
        user.move(to, kButtonLeft);
        user.release(to, kButtonLeft);
    }

    Orbel::CPropertyManager manager;
    CFrame* frame = new CFrame({0.0, 0.0, 600.0, 350.0}, nullptr, nullptr);
    CEnvelopeDisplaySingle* display; // the frame's
};
}

TEST_F(EnvelopeDisplaySingle, ShowsStoredTimesAtOnePlaceAtEveryTempo)
{
    for (const float tempo : {10.0f, 60.0f, 128.0f, 174.5f, 999.0f})
    {
        display->setTempo(tempo);
        EXPECT_NEAR(placeOf(0).y, 0.0, 1e-9) << "the start has full gain";
        EXPECT_NEAR(placeOf(2).x, 55.3, 1e-3) << tempo;
        EXPECT_NEAR(placeOf(2).y, 237.0, 1e-3) << "strength 1 is the bottom";
        EXPECT_NEAR(placeOf(3).x, 82.95, 1e-3) << tempo;
        EXPECT_NEAR(placeOf(5).x, 193.55, 1e-3) << tempo;
        EXPECT_NEAR(placeOf(5).y, 0.0, 1e-9);
    }
    for (const int id : {DKS_Mini::kAttackTime, DKS_Mini::kHoldTime, DKS_Mini::kReleaseTime})
        set(id, 5000.0f);
    const CRect handle = (placeOf(5), display->getEnvelopePointFromIndex(5)->handle);
    EXPECT_EQ(handle.right, 572.5 + 4.0) << "beyond the right edge the handle stays there";
}

TEST_F(EnvelopeDisplaySingle, DragsSnapToSixteenths)
{
    display->setTempo(120.0f);
    drag(2, 14.0, 0.0); // a sixteenth is 69.125 units: 69.3 is near
    EXPECT_NEAR(get(DKS_Mini::kAttackTime), 117.1875f, 1e-3) << "the sixteenth";
    drag(2, 20.0, -118.5);
    EXPECT_NEAR(get(DKS_Mini::kAttackTime), 117.1875f + 20.0f * 937.5f / 553.0f, 0.01f) << "too far from any";
    EXPECT_NEAR(get(DKS_Mini::kStrength), 0.5f, 1e-5f);
    drag(2, -600.0, 0.0);
    EXPECT_EQ(get(DKS_Mini::kAttackTime), 0.0f) << "never to none";
}

TEST_F(EnvelopeDisplaySingle, TellsWhatItShows)
{
    for (int i = 0; i < gNumTimeAdjustEntries; ++i)
    {
        display->setTimeAdjust(gTimeAdjustMultiplier[i]);
        EXPECT_EQ(display->getTimeAdjustIndex(), i);
    }
    display->setTimeAdjust(0.7f);
    EXPECT_EQ(display->getTimeAdjustIndex(), -1);
    frame->idle();
    display->setEnvelopePosition(2, 0.5f);
    EXPECT_FALSE(frame->getDirtyRects().size() == 0) << "the dot";
}
