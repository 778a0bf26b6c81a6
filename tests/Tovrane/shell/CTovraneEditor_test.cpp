// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/base/VirtualClock.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/shell/CTovraneEditor.h"
#include "Tovrane/shell/DrawnControls.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/controls/Tovra_ParamDisplay.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

using namespace Tovra;

namespace
{
// One parameter that hosts automate, and one that they don't; the host writes down what it hears.
struct Effect : Orbel::OrbelCallback, Orbel::OrbelOS
{
    Effect() : OrbelOS(this)
    {
        for (int i = 0; i < 2; ++i)
        {
            Orbel::ParameterPropertySetup row;
            row.id = row.longName = row.shortName = i == 0 ? "LEVEL" : "LINK";
            row.parameterId = i;
            row.maximum = 1.0f;
            row.automatable = i == 0;
            properties[i].setup(&row);
        }
    }
    int getParameterCount() override { return 1; }
    Orbel::ParameterProperty* getParameterProperty_automateable(int) override { return &properties[0]; }
    bool CB_beginEdit(int i) override { return note("begin " + std::to_string(i)); }
    bool CB_endEdit(int i) override { return note("end " + std::to_string(i)); }
    void CB_performEdit(int i, float) override { note("perform " + std::to_string(i)); }
    void CB_stateChanged() override { note("changed"); }
    float CB_getHostTempo() override { return 133.0f; }
    bool note(const std::string& what)
    {
        log.push_back(what);
        return true;
    }

    Orbel::ParameterProperty properties[2];
    std::vector<std::string> log;
};

struct Editor : CTovraneEditor
{
    explicit Editor(Orbel::OrbelOS* of) : CTovraneEditor(of) { setSize(300, 175); }
    ~Editor() override { close(); }
    void prepeareGUI(CFrame* made) override
    {
        ++openings;
        for (int i = 0; i < 2 && effect != nullptr; ++i)
        {
            auto* const button = new Tovra_ActionButton(CRect(20 * i, 0, 20 * i + 16, 16), nullptr, 0,
                                                        nullptr, Tovra_ActionButton::kMomentary, false, 1.0f);
            button->setAttachedProperty(&effect->properties[i]);
            made->addView(button);
        }
    }
    void onIdle() override { ++idles; }
    WindowEvents& user() { return HeadlessFrame::of(*getFrame())->events(); }

    Effect* effect = nullptr;
    int openings = 0, idles = 0;
};

struct Window final : Orbel::IEditorWindow
{
    bool resize(double width, double height) override
    {
        sizes.push_back(std::to_string(int(width)) + "x" + std::to_string(int(height)));
        return true;
    }
    std::vector<std::string> sizes;
};

using Texts = std::vector<std::string>;
}

TEST(CTovraneEditor, IsIdledByTheLoopOfItsOwnWindowUntilItCloses)
{
    VirtualClock clock;
    PollRunLoop first, second;
    Editor a(nullptr), b(nullptr);
    RunLoop::enter(first);
    EXPECT_TRUE(a.open(nullptr));
    RunLoop::enter(second);
    EXPECT_TRUE(b.open(nullptr));
    EXPECT_EQ(a.idles, 1) << "once at the opening";
    first.runFor(100);
    EXPECT_EQ(a.idles, 5);
    EXPECT_EQ(b.idles, 1);
    second.runFor(50);
    EXPECT_EQ(b.idles, 4) << "what it missed is made up for by one";

    a.close();
    EXPECT_FALSE(a.isOpen());
    EXPECT_FALSE(first.runOnce(-1)) << "nothing is left to wait for";
    a.close();
    EXPECT_TRUE(a.open(nullptr)); // once more, now on the other loop
    EXPECT_EQ(a.openings, 2);
    second.runFor(25);
    EXPECT_EQ(a.idles, 7);
    EXPECT_TRUE(a.open(nullptr)) << "open already: it begins anew";
    EXPECT_EQ(a.openings, 3);
}

TEST(CTovraneEditor, ConvertsBetweenPixelsAndUnitsWithOneScale)
{
    Editor editor(nullptr);
    Window window;
    editor.setWindow(&window);
    const auto sizeOf = [&editor]
    {
        double width = 0.0, height = 0.0;
        editor.getSize(width, height);
        return std::to_string(int(width)) + "x" + std::to_string(int(height));
    };
    editor.setContentScale(2.0);
    EXPECT_EQ(sizeOf(), "600x350") << "before it is open";
    editor.open(nullptr);
    CPoint point(100.0, 50.0);
    editor.convertWorldToPlugin(point);
    EXPECT_EQ(point, CPoint(50.0, 25.0));
    editor.convertPluginToWorld(point);
    EXPECT_EQ(point, CPoint(100.0, 50.0));
    UserScale::choose(150);
    EXPECT_EQ(editor.getFrame()->getScale(), 3.0);
    UserScale::choose(100);
    editor.setContentScale(1.1);
    editor.setContentScale(-1.0); // not told: the desktop's, which is 1
    EXPECT_EQ(window.sizes, Texts({"600x350", "900x525", "600x350", "330x193", "300x175"}));
    EXPECT_TRUE(editor.setSize(200, 100));
    EXPECT_EQ(window.sizes.back(), "200x100");
    EXPECT_EQ(editor.getFrame()->getFrameBitmap()->getWidth(), 200u);
}

TEST(CTovraneEditor, PassesGesturesOnAndEndsThemWithItsWindow)
{
    Effect effect;
    Editor editor(&effect);
    editor.effect = &effect;
    EXPECT_EQ(editor.getEffectTempo(), 133.0);
    editor.open(nullptr);
    editor.user().press(CPoint(5.0, 5.0), kButtonLeft);
    editor.close();
    EXPECT_EQ(effect.log.front(), "begin 0");
    EXPECT_EQ(effect.log.back(), "end 0");
    effect.log.clear();
    editor.open(nullptr);
    editor.user().press(CPoint(25.0, 5.0), kButtonLeft);
    editor.user().release(CPoint(25.0, 5.0), kButtonLeft);
    EXPECT_EQ(effect.log, Texts({"changed"})) << "no host automates this one, but it is saved";
}

TEST(CTovraneEditor, DrawsWhatItIsAskedForAndNothingWithoutAFrame)
{
    Editor editor(nullptr);
    int noWindow = 0;
    EXPECT_FALSE(editor.open(&noWindow)) << "a parent that no window system knows";
    EXPECT_FALSE(editor.isOpen());
    EXPECT_FALSE(editor.onWheel(1.0f));
    EXPECT_FALSE(editor.onKeyDown({}));
    EXPECT_FALSE(editor.setSize(300, 175));
    EXPECT_EQ(editor.getEffectTempo(), -1.0);
    editor.draw(nullptr);
    editor.idle();
    editor.open(nullptr);
    editor.getFrame()->setBackgroundColor(kRedCColor);
    IOSBitmap& picture = *editor.getFrame()->getFrameBitmap();
    const auto isRed = [&picture](int x, int y)
    { return picture.getPixelPtr()[y * picture.getRowBytes() + 4 * x + 2] == 255; };
    const CRect turned(100.0, 90.0, 50.0, 40.0);
    editor.draw(&turned);
    EXPECT_TRUE(isRed(50, 40) && isRed(99, 89) && !isRed(49, 40));
    editor.draw(nullptr);
    EXPECT_TRUE(isRed(0, 0) && isRed(299, 174));
}

TEST(CTovraneEditor, MakesObjectsByTheirKind)
{
    struct Own : Tovra_ObjectConstructorInfoBase
    {
        void createObject() override { object = new CViewContainer(rect); }
    };
    Editor editor(nullptr);
    editor.open(nullptr);
    std::set<int> displays, own;
    for (int kind = 98; kind <= 112; ++kind)
    {
        CTextLabelInfo label;
        Own other;
        label.kind = other.kind = kind;
        label.object = other.object = reinterpret_cast<CView*>(1); // what was there is no result
        editor.addGuiObject(&label, nullptr);
        editor.addGuiObject(&other, nullptr);
        EXPECT_EQ(label.frame, editor.getFrame());
        if (label.object != nullptr && label.object->isTypeOf("Tovra_ParamDisplay"))
            displays.insert(kind);
        if (other.object != nullptr && editor.getFrame()->isChild(other.object))
            own.insert(kind);
    }
    EXPECT_EQ(displays, (std::set{100, 101, 103, 104, 105, 106, 107}));
    EXPECT_EQ(own, (std::set{109, 110}));

    Own outer;
    CTextLabelInfo inner;
    outer.kind = CTovraneEditor::kindOwn;
    inner.kind = CTovraneEditor::kindNameDisplay;
    editor.addGuiObject(&outer, nullptr);
    editor.addGuiObject(&inner, dynamic_cast<CViewContainer*>(outer.object));
    EXPECT_EQ(inner.object->getParentView(), outer.object);
    editor.addGuiObject(nullptr, nullptr);
}

TEST(DrawnControls, ShowTheStateOfAParameter)
{
    Effect effect;
    CFrame frame(CRect(0.0, 0.0, 60.0, 60.0), nullptr, nullptr);
    const auto picture = [&](auto draw)
    {
        const auto context = Kept<CDrawContext>::adopt(frame.createDrawContext());
        frame.getRenderer()->clearAll(0, 0, 0, 255);
        draw(context.get());
        IOSBitmap& bitmap = *frame.getFrameBitmap();
        return std::string(reinterpret_cast<const char*>(bitmap.getPixelPtr()),
                           bitmap.getHeight() * std::size_t(bitmap.getRowBytes()));
    };
    const CRect place(5.0, 5.0, 45.0, 59.0);
    std::set<std::string> pictures;
    for (const float value : {0.0f, 1.0f})
    {
        effect.properties[0].setValue(value);
        pictures.insert(picture([&](auto* on) { drawOnOffSwitch(place, on, &effect.properties[0]); }));
        for (const bool enabled : {false, true})
            for (const char* const label : {"", "Attack"})
                pictures.insert(
                    picture([&](auto* on) { drawKnob(place, on, &effect.properties[0], label, enabled); }));
    }
    EXPECT_EQ(pictures.size(), 10u);
    const std::string nothing = picture([](auto*) {});
    EXPECT_EQ(picture([&](auto* on) { drawOnOffSwitch(place, on, nullptr); }), nothing);
    EXPECT_FALSE(pictures.contains(nothing));
}
