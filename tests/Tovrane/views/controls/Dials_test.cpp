// SPDX-License-Identifier: GPL-3.0-or-later
// How dials and buttons look, and where the mouse reaches them.
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/controls/Tovra_AnimKnob.h"
#include "Tovrane/views/controls/Tovra_ParamDisplay.h"
#include "Tovrane/views/tree/EditLog.h"

#include <cmath>

using namespace Tovra;
using testing::ElementsAre;

namespace
{
// A strip of pictures 40 units wide and high, each of one green: 0, 100, 200.
struct Strip
{
    explicit Strip(int pictures = 3)
    {
        memory.setSize(40, unsigned(40 * pictures));
        for (unsigned i = 0; i < memory.getTotalBytes(); i += 4)
        {
            memory.getPixelPtr()[i + 1] = static_cast<unsigned char>(100 * (i / 4 / 1600));
            memory.getPixelPtr()[i + 3] = 255;
        }
        bitmap->attachImg(&memory);
    }
    CMACBitmap memory;
    Kept<CBitmap> bitmap = Kept<CBitmap>::adopt(new CBitmap(nullptr, true));
};

class Dials : public testing::Test
{
protected:
    Dials()
    {
        property.setMin(0.0f);
        property.setMax(10.0f);
        property.setDefaultValue(2.5f);
        property.setValue(5.0f);
    }
    ~Dials() override { frame->close(); }

    Tovra_AnimKnob& dial()
    {
        auto* const made =
            new Tovra_AnimKnob({10, 10, 50, 50}, &host, 7, 3, 40.0, strip.bitmap.get(), {}, &property);
        frame->addView(made);
        return *made;
    }
    WindowEvents& user() { return HeadlessFrame::of(*frame.get())->events(); }
    int shownGreen()
    {
        frame->idle();
        const IOSBitmap& picture = *frame->getFrameBitmap();
        return const_cast<IOSBitmap&>(picture).getPixelPtr()[30 * picture.getRowBytes() + 30 * 4 + 1];
    }

    Host host;
    Orbel::ParameterProperty property;
    Strip strip;
    Kept<ReadOutFrame> frame =
        Kept<ReadOutFrame>::adopt(new ReadOutFrame(CRect(0, 0, 100, 100), nullptr, &host));
};

}

TEST_F(Dials, StepsAndCircleLimitWhatTheMouseDoes)
{
    Tovra_AnimKnob& knob = dial();
    property.setMax(4.0f);
    knob.setSteps(5);
    property.setValue(0.0f);
    user().press({30, 30}, kButtonLeft);
    std::set<float> seen;
    for (double y = 30; y > -180; --y)
    {
        user().move({30, y}, kButtonLeft);
        seen.insert(property.getCurrentValue());
        EXPECT_EQ(knob.getValue(), property.getCurrentValue() / 4.0f);
    }
    user().releaseAll();
    EXPECT_THAT(seen, ElementsAre(0.0f, 1.0f, 2.0f, 3.0f, 4.0f));

    knob.setSteps(0);
    EXPECT_TRUE(knob.hitTest({12, 12}));
    knob.setCircularHit(true);
    EXPECT_FALSE(knob.hitTest({12, 12}));
    EXPECT_TRUE(knob.hitTest({30, 50}));
    knob.setHitRadius(5);
    EXPECT_FALSE(knob.hitTest({30, 40}));
}

TEST_F(Dials, GlideMixTwoPicturesAndFadeWhenDisabled)
{
    Tovra_AnimKnob& knob = dial();
    EXPECT_NEAR(shownGreen(), 100, 1);
    property.setValue(7.5f); // half-way to the third picture
    EXPECT_NEAR(knob.getEasedValue(), 0.5, 1e-6);
    frame->idle();
    EXPECT_NEAR(knob.getEasedValue(), 0.6, 1e-3);
    for (int i = 0; i < 20; ++i)
        frame->idle();
    EXPECT_FLOAT_EQ(knob.getEasedValue(), 0.75f);
    EXPECT_FALSE(knob.isDirty());
    EXPECT_NEAR(shownGreen(), 150, 2);
    property.setValue(0.0f);
    knob.setEased(false);
    EXPECT_EQ(shownGreen(), 0);
    knob.setEased(true);
    property.setValue(10.0f);
    knob.setEased(false);
    knob.setEnabled(false);
    EXPECT_NEAR(shownGreen(), 200 * 61 / 256, 2); // over black
}

TEST_F(Dials, ACircularDragStopsAtTheNearerEnd)
{
    auto* const knob = new CKnob({10, 10, 50, 50}, &host, 1, nullptr, nullptr);
    frame->addView(knob);
    knob->setAttachedProperty(&property);
    for (const auto& [x, y, expected] : {std::tuple(30.0, 11.0, 5.0f),
                                         {11.0, 30.0, 10.0f / 6},
                                         {49.0, 30.0, 50.0f / 6},
                                         {27.0, 49.0, 0.0f},
                                         {33.0, 49.0, 10.0f}})
    {
        user().press({x, y}, kButtonLeft);
        user().releaseAll();
        EXPECT_NEAR(property.getCurrentValue(), expected, 0.01) << x << ", " << y;
        CPoint handle;
        knob->valueToPoint(handle);
        EXPECT_NEAR(knob->valueFromPoint(handle), knob->getValue(), 1e-5);
    }
    property.setValue(5.0f);
    user().press({30, 11}, kButtonLeft | kModAlt); // up and to the right
    user().move({40, 1}, kButtonLeft | kModAlt);
    EXPECT_NEAR(property.getCurrentValue(), 6.0f, 1e-4);
    user().releaseAll();
}

TEST_F(Dials, AButtonShowsItsState)
{
    auto* const button = new Tovra_ActionButton({10, 10, 50, 50}, &host, 1, strip.bitmap.get(),
                                                Tovra_ActionButton::kToggle, false, 1.0f);
    frame->addView(button);
    button->setAttachedProperty(&property);
    for (const float value : {0.0f, 1.0f})
    {
        property.setValue(value);
        EXPECT_NEAR(shownGreen(), 100 * value, 1);
    }
}

TEST_F(Dials, ATextFollowsItsParameter)
{
    property.setUnitType(Orbel::ParameterUnitType::Milliseconds);
    CTextLabelInfo info;
    info.rect = {10, 10, 90, 30};
    info.attachedProperty = &property;
    auto* const display = new Tovra_ParamDisplay(info);
    frame->addView(display);
    frame->idle();
    EXPECT_FALSE(display->isDirty());
    property.setValue(7.5f);
    EXPECT_TRUE(display->isDirty());
    const std::string withUnit = display->getText();
    EXPECT_EQ(withUnit, "8ms");
    display->setRenderUnitsInSecondLine(true);
    EXPECT_EQ(display->getText().find("ms"), std::string::npos);
}
