// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/views/tree/EditLog.h"
#include "Tovrane/window/MouseEvents.h"

#include <atomic>
#include <cmath>
#include <cstring>
#include <thread>

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class BoundControl : public PlainControl
{
public:
    using CControl::setEnabledProperty;
    using PlainControl::PlainControl;
};

class CControlInFrame : public testing::Test
{
protected:
    CControlInFrame()
    {
        property.setMin(0.0f);
        property.setMax(10.0f);
        property.setDefaultValue(2.5f);
        property.setUnitType(Orbel::ParameterUnitType::SignedPercent);
        frame->addView(control);
    }
    ~CControlInFrame() override { frame->close(); }

    Host host;
    Kept<ReadOutFrame> frame =
        Kept<ReadOutFrame>::adopt(new ReadOutFrame(CRect(0, 0, 200, 100), nullptr, &host));
    Orbel::ParameterProperty property, shown, enabled;
    BoundControl* control = new BoundControl(CRect(0, 0, 50, 50), &host);
};
}

TEST_F(CControlInFrame, OnlyTwoClicksSetTheDefaultInOneWholeEdit)
{
    control->setAttachedProperty(&property);
    const struct
    {
        long buttons;
        bool does;
    } cases[] = {
        {kButtonMiddle, true},
        {kButtonLeft | kModCommand, true},
        {kButtonLeft, false},
        {kButtonRight, false},
        {kButtonMiddle | kModShift, false},
        {kButtonLeft | kModCommand | kDoubleClick, false},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.buttons);
        host.log.clear();
        property.setValue(10.0f);
        control->setValue(1.0f);
        EXPECT_EQ(control->checkDefaultValue(c.buttons), c.does);
        EXPECT_EQ(control->getValue(), c.does ? 0.25f : 1.0f);
        EXPECT_EQ(property.getCurrentValue(), c.does ? 2.5f : 10.0f);
        if (c.does)
            EXPECT_THAT(host.log, ElementsAre("listener begins", "host begins", "host performs 2.500000",
                                              "changed", "host ends", "listener ends"));
        else
            EXPECT_THAT(host.log, IsEmpty());
    }
    EXPECT_EQ(frame->getFocusView(), control);
}

TEST_F(CControlInFrame, EditsWithoutPropertyOrFrameStayHere)
{
    control->setDefaultValue(0.75f);
    EXPECT_TRUE(control->checkDefaultValue(kButtonMiddle));
    EXPECT_EQ(control->getValue(), 0.75f);
    EXPECT_THAT(taken(host.log), ElementsAre("listener begins", "changed", "listener ends"));
    control->beginEdit(nullptr);
    EXPECT_THAT(host.log, IsEmpty());

    PlainControl alone({0, 0, 1, 1});
    alone.setAttachedProperty(&property);
    EXPECT_TRUE(alone.checkDefaultValue(kButtonMiddle));
    EXPECT_EQ(property.getCurrentValue(), 2.5f);
    EXPECT_THAT(host.log, IsEmpty());
}

TEST_F(CControlInFrame, IsDirtyUntilItsValueWasDrawn)
{
    frame->idle();
    EXPECT_FALSE(control->isDirty());
    control->setValue(0.5f);
    EXPECT_TRUE(control->isDirty());
    control->setDirty(false);
    EXPECT_FALSE(control->isDirty());
    control->setDirty(true);
    EXPECT_EQ(control->getOldValue(), -1.0f);
    control->setValue(-1.0f); // the old value has to differ from the value
    control->setDirty(true);
    EXPECT_EQ(control->getOldValue(), 0.0f);

    control->bounceValue();
    EXPECT_EQ(control->getValue(), 0.0f);
    control->setValue(7.0f);
    control->bounceValue();
    EXPECT_EQ(control->getValue(), 1.0f);
    control->setValue(std::nanf(""));
    EXPECT_EQ(control->getValue(), 1.0f);
}

TEST_F(CControlInFrame, FollowsItsVisibleAndEnabledProperties)
{
    shown.setValue(1.0f);
    control->setVisibleProperty(&shown);
    control->setEnabledProperty(&enabled);
    EXPECT_TRUE(control->isVisible());
    EXPECT_FALSE(control->isEnabled());
    shown.setValue(0.0f);
    enabled.setValue(0.6f);
    EXPECT_FALSE(control->isVisible());
    EXPECT_TRUE(control->isEnabled());
    control->setVisibleProperty(nullptr);
    shown.setValue(1.0f);
    EXPECT_FALSE(control->isVisible());
    frame->removeView(control);
    enabled.setValue(0.0f); // nobody listens any more
}

// As when a host plays automation while the user closes the editor.
TEST_F(CControlInFrame, GoesWhileAnotherThreadWritesItsParameters)
{
    std::atomic<bool> stop = false;
    std::thread writer(
        [&]
        {
            for (float value = 0.0f; !stop; value = 1.0f - value)
            {
                shown.setValue(value);
                enabled.setValue(value);
            }
        });
    for (int i = 0; i < 50; ++i)
    {
        auto* const made = new BoundControl(CRect(0, 0, 50, 50), &host);
        made->setVisibleProperty(&shown);
        made->setEnabledProperty(&enabled);
        frame->addView(made);
        frame->idle();
        frame->removeView(made);
    }
    stop = true;
    writer.join();
}

TEST_F(CControlInFrame, PublishesTheTextOfItsPropertyUnderTheMouse)
{
    CPoint over(5, 5), outside(90, 90);
    property.setParamLongName(
        "A name that is rather longer than any that was ever seen, so that it has to be cut "
        "somewhere, which is what a long name has to expect");
    property.setValue(10.0f);
    control->setAttachedProperty(&property);
    EXPECT_EQ(control->onMouseMoved(over, kButtonLeft), kMouseHandled);
    EXPECT_EQ(control->onMouseMoved(outside, 0), kMouseUnimplemented);
    EXPECT_EQ(control->onMouseEntered(over, kButtonLeft), kMouseHandled);
    ASSERT_EQ(frame->texts.size(), 1u);
    EXPECT_EQ(frame->texts[0].size(), 127u);
    EXPECT_EQ(frame->texts[0].rfind("A name that", 0), 0u);

    char text[Orbel::kParameterTextSize] = "100 %s of it";
    property.setUnitType(Orbel::ParameterUnitType::Text);
    property.setDataPointer(text);
    char readout[Orbel::kParameterTextSize] = {};
    shown.setUnitType(Orbel::ParameterUnitType::Text);
    shown.setDataPointer(readout);
    control->setReadoutProperty(&shown);
    frame->texts.clear();
    control->onMouseEntered(over, 0);
    EXPECT_STREQ(readout, "100 %s of it");
    control->onMouseExited(over, kButtonLeft);
    control->onMouseExited(over, 0);
    EXPECT_STREQ(readout, "");
    property.setDataPointer(nullptr);
    control->updateReadout();
    control->setEnabled(false);
    control->updateReadout();
    EXPECT_THAT(frame->texts, ElementsAre("100 %s of it", "", ""));
    frame->texts.clear();
    frame->onMouseExited(outside, 0); // the pointer leaves the window
    EXPECT_THAT(frame->texts, ElementsAre(""));
}
