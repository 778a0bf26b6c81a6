// SPDX-License-Identifier: GPL-3.0-or-later
// What dragging, wheeling and keys do to dials and buttons: values, gestures in their order, and pictures.
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/controls/Tovra_AnimKnob.h"
#include "Tovrane/views/controls/Tovra_ParamDisplay.h"
#include "Tovrane/views/tree/EditLog.h"

#include <cmath>

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

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
    Log edits() { return taken(host.log); }
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

// One move of a drag that begins at (30, 30).
struct Step
{
    double y;
    long buttons;
    float expected; // normalised
};
}

TEST_F(Dials, ADragIsOneGestureWhoseSlopeDependsOnButtonsAndKeys)
{
    Tovra_AnimKnob& knob = dial();
    const long shift = kModShift;
    const struct
    {
        const char* name;
        long press;
        std::vector<Step> steps;
    } cases[] = {
        {"left", kButtonLeft, {{10, kButtonLeft, 0.6f}, {-500, kButtonLeft, 1.0f}, {50, kButtonLeft, 0.4f}}},
        {"right is fine", kButtonRight, {{10, kButtonRight, 0.51f}}},
        {"shift is fine", kButtonLeft | shift, {{10, kButtonLeft | shift, 0.51f}}},
        {"shift on the way",
         kButtonLeft,
         {{10, kButtonLeft, 0.6f},
          {10.5, kButtonLeft | shift, 0.6f},
          {-9.5, kButtonLeft | shift, 0.61f},
          {-9, kButtonLeft, 0.61f},
          {-29, kButtonLeft, 0.71f}}},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.name);
        property.setValue(5.0f);
        const long button = one.press & ~kAllModifiers;
        user().press({30, 30}, one.press);
        EXPECT_THAT(edits(), ElementsAre("listener begins", "host begins"));
        for (const Step& step : one.steps)
        {
            user().move({30, step.y}, step.buttons);
            EXPECT_NEAR(property.getCurrentValue_normalized(), step.expected, 0.003) << step.y;
            EXPECT_EQ(knob.getEasedValue(), knob.getValue());
        }
        for (const std::string& entry : edits())
            EXPECT_TRUE(entry == "changed" || entry.rfind("host performs", 0) == 0) << entry;
        user().release({30, 30}, button);
        const Log last = edits();
        ASSERT_EQ(last.size(), 3u);
        EXPECT_EQ(last[1], "host ends");
        EXPECT_EQ(last[2], "listener ends");
    }
}

// Whatever ends it, a gesture ends once; a second button changes nothing.
TEST_F(Dials, AGestureEndsOnceAndByItsOwnButton)
{
    const std::function<void(Tovra_AnimKnob&)> ends[] = {
        [&](Tovra_AnimKnob&) {
            user().release({30, 20}, kButtonLeft);
        },
        [&](Tovra_AnimKnob&) { user().releaseAll(); },
        [&](Tovra_AnimKnob& knob) { knob.setVisible(false); },
        [&](Tovra_AnimKnob& knob) { frame->removeView(&knob); },
        [&](Tovra_AnimKnob&) { frame->close(); },
    };
    for (const auto& end : ends)
    {
        const Kept<Tovra_AnimKnob> knob(&dial());
        property.setValue(5.0f);
        edits();
        user().press({30, 30}, kButtonLeft);
        user().press({90, 90}, kButtonRight); // outside of the dial
        user().move({30, 20}, kButtonLeft | kButtonRight);
        user().release({90, 90}, kButtonRight);
        user().move({30, 20}, kButtonLeft);
        EXPECT_TRUE(knob->isEdited());
        end(*knob.get());
        EXPECT_FALSE(knob->isEdited());
        user().releaseAll();
        knob->setVisible(true);
        const Log all = edits();
        EXPECT_EQ(std::count(all.begin(), all.end(), "host begins"), 1);
        EXPECT_EQ(std::count(all.begin(), all.end(), "host ends"), 1);
        EXPECT_EQ(all.back(), "listener ends");
        frame->removeView(knob.get());
    }
}

TEST_F(Dials, WheelKeysAndClicksAreWholeGestures)
{
    Tovra_AnimKnob& knob = dial();
    const auto key = [&](int virtualKey, int modifiers)
    {
        TovraKeyCode code;
        code.virtualKey = std::uint8_t(virtualKey);
        code.modifiers = std::uint8_t(modifiers);
        user().keyDown(code);
    };
    frame->setFocusView(&knob);
    const struct
    {
        const char* name;
        std::function<void()> does;
        float expected;
    } cases[] = {
        {"wheel",
         [&] {
             user().wheel({30, 30}, 0, 1, 0);
         },
         6.0f},
        {"fine wheel",
         [&] {
             user().wheel({30, 30}, 0, -1, kModShift);
         },
         4.9f},
        {"wheel to the end",
         [&] {
             user().wheel({30, 30}, 0, 100, 0);
         },
         10.0f},
        {"up", [&] { key(kVirtualUp, 0); }, 6.0f},
        {"fine left", [&] { key(kVirtualLeft, kKeyShift); }, 4.9f},
        {"middle",
         [&] {
             user().press({30, 30}, kButtonMiddle);
         },
         2.5f},
        {"command click",
         [&] {
             user().press({30, 30}, kButtonLeft | kModCommand);
         },
         2.5f},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.name);
        property.setValue(5.0f);
        edits();
        one.does();
        EXPECT_NEAR(property.getCurrentValue(), one.expected, 1e-5);
        EXPECT_THAT(edits(), ElementsAre("listener begins", "host begins",
                                         "host performs " + std::to_string(property.getCurrentValue()),
                                         "changed", "host ends", "listener ends"));
        user().releaseAll();
        EXPECT_THAT(edits(), IsEmpty());
    }
    knob.setEnabled(false);
    user().wheel({30, 30}, 0, -1, 0);
    key(kVirtualUp, 0);
    EXPECT_THAT(edits(), IsEmpty());
}

TEST_F(Dials, StepsDetentAndCircleLimitWhatTheMouseDoes)
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
    user().wheel({30, 30}, 0, -1, 0);
    EXPECT_EQ(property.getCurrentValue(), 3.0f) << "a notch is at least a step";

    knob.setSteps(0);
    knob.deadZone().isOn = true;
    for (const auto& [from, y, expected] : {std::tuple(0.4f, 11.0, 0.495f),
                                            {0.4f, 9.0, 0.5f},
                                            {0.4f, 5.0, 0.5f},
                                            {0.4f, -2.0, 0.5f},
                                            {0.4f, -8.0, 0.53f},
                                            {0.5f, 26.0, 0.5f},
                                            {0.5f, 22.0, 0.51f}})
    {
        property.setValue_Normalized(from);
        user().press({30, 30}, kButtonLeft);
        user().move({30, y}, kButtonLeft);
        EXPECT_NEAR(knob.getValue(), expected, 0.002) << "from " << from << " to " << y;
        user().releaseAll();
    }
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

TEST_F(Dials, AButtonIsHeldOrFlipped)
{
    for (const auto mode : {Tovra_ActionButton::kMomentary, Tovra_ActionButton::kToggle})
    {
        SCOPED_TRACE(int(mode));
        auto* const button =
            new Tovra_ActionButton({10, 10, 50, 50}, &host, 1, strip.bitmap.get(), mode, false, 1.0f);
        frame->addView(button);
        property.setMax(1.0f);
        property.setValue(0.0f);
        button->setAttachedProperty(&property);
        EXPECT_EQ(shownGreen(), 0);
        edits();
        user().press({30, 30}, kButtonLeft);
        EXPECT_EQ(property.getCurrentValue(), 1.0f);
        EXPECT_NEAR(shownGreen(), 100, 1);
        user().release({30, 30}, kButtonLeft);
        EXPECT_EQ(property.getCurrentValue(), mode == Tovra_ActionButton::kToggle ? 1.0f : 0.0f);
        const Log all = edits();
        EXPECT_EQ(std::count(all.begin(), all.end(), "changed"), mode == Tovra_ActionButton::kToggle ? 1 : 2);
        EXPECT_EQ(std::count(all.begin(), all.end(), "host begins"), 1);
        EXPECT_EQ(all.back(), "listener ends");

        user().press({30, 30}, kButtonLeft); // and the window goes
        frame->removeView(button, false);
        EXPECT_EQ(property.getCurrentValue(), 0.0f);
        EXPECT_EQ(edits().back(), "listener ends");
        button->forget();
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
