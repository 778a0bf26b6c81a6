// SPDX-License-Identifier: GPL-3.0-or-later
// Every control, live: to be dragged, wheeled, typed into, and reached by the keyboard.
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/shell/DrawnControls.h"
#include "Tovrane/views/controls/COptionMenu.h"
#include "Tovrane/views/controls/CTextEdit.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/controls/Tovra_AnimKnob.h"
#include "Tovrane/views/controls/Tovra_ParamDisplay.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/Sketch.h"

#include <array>
#include <functional>
#include <numbers>

using namespace Tovra;

namespace Gallery
{
namespace
{
// Pictures below one another, each drawn by a function from its number.
class Strip
{
public:
    Strip(int side, int count, const std::function<void(PelmoAGG&, int)>& drawOne)
    {
        memory.setSize(unsigned(side), unsigned(side * count));
        for (int i = 0; i < count; ++i)
        {
            PelmoAGG renderer;
            renderer.attach(memory.getPixelPtr() + std::ptrdiff_t(i) * side * memory.getRowBytes(),
                            unsigned(side), unsigned(side), memory.getRowBytes());
            drawOne(renderer, i);
        }
        picture->attachImg(&memory);
    }

    CBitmap* bitmap() { return picture.get(); }

private:
    CMACBitmap memory;
    Kept<CBitmap> picture = Kept<CBitmap>::adopt(new CBitmap(nullptr, true));
};

agg::rgba8 ink8(CColor color)
{
    return {color.red, color.green, color.blue, color.alpha};
}

constexpr int dialSide = 56;
constexpr int dialPictures = 61;

// An arc that grows with the value, and a pointer.
void drawDial(PelmoAGG& to, int number)
{
    constexpr double middle = dialSide / 2.0, start = 0.75 * std::numbers::pi, whole = 1.5 * std::numbers::pi;
    const double way = whole * number / (dialPictures - 1);
    to.noFill();
    to.lineWidth(4.0);
    to.lineColor(ink8(edge));
    to.arc(middle, middle, 23, 23, start, whole);
    to.lineColor(ink8(accent));
    if (number > 0)
        to.arc(middle, middle, 23, 23, start, way);
    to.noLine();
    to.fillColor(ink8(panel));
    to.ellipse(middle, middle, 17, 17);
    to.lineColor(ink8(ink));
    to.lineWidth(2.5);
    const double angle = start + way;
    to.line(middle + 7 * std::cos(angle), middle + 7 * std::sin(angle), middle + 15 * std::cos(angle),
            middle + 15 * std::sin(angle));
}

constexpr int buttonSide = 32;

void drawPower(PelmoAGG& to, int isOn)
{
    constexpr double middle = buttonSide / 2.0;
    to.noFill();
    to.lineColor(ink8(isOn ? accent : edge));
    to.lineWidth(3.0);
    to.arc(middle, middle, 10, 10, -1.0, 5.14);
    to.line(middle, 3, middle, 13);
}

// A parameter's state, drawn by lines.
class Drawn : public CControl
{
public:
    Drawn(const CRect& rect, Orbel::ParameterProperty& property, bool isKnobShown)
        : CControl(rect), isKnob(isKnobShown)
    {
        setAttachedProperty(&property);
    }
    void parameterChanged(Orbel::ParameterProperty* property) override
    {
        CControl::parameterChanged(property);
        setDirty(true);
    }
    void draw(CDrawContext* context) override
    {
        if (isKnob)
            drawKnob(getViewSize(), context, getAttachedProperty(), "Level", isEnabled());
        else
            drawOnOffSwitch(getViewSize(), context, getAttachedProperty());
        setDirty(false);
    }
    CView* newCopy() const override { return nullptr; }

private:
    const bool isKnob;
};

// The parameters and the controls that are bound to them.
class Board : public CViewContainer
{
public:
    explicit Board(const CRect& rect) : CViewContainer(rect)
    {
        setTransparency(true);
        setUp(level, Orbel::ParameterUnitType::SignedPercent, 0.0f, 1.0f, 0.35f, "Level");
        setUp(time, Orbel::ParameterUnitType::Milliseconds, 0.0f, 500.0f, 120.0f, "Time");
        setUp(count, Orbel::ParameterUnitType::Integer, 0.0f, 4.0f, 1.0f, "Steps");
        setUp(power, Orbel::ParameterUnitType::Switch, 0.0f, 1.0f, 1.0f, "Power");
        addDials();
        addButtons();
        addMenus();
        addBoxes();
        addView(new Drawn({0, 282, 56, 334}, level, true));
        addView(new Drawn({108, 290, 132, 314}, power, false));
    }
    Board(const Board&) = delete;
    // The controls go before their parameters. The reference keeps the count from reaching 0 a second time.
    ~Board() override
    {
        remember();
        removeAll();
    }
    CView* newCopy() const override { return nullptr; }

private:
    static void setUp(Orbel::ParameterProperty& property, Orbel::ParameterUnitType type, float low,
                      float high, float value, const char* name)
    {
        property.setUnitType(type);
        property.setMin(low);
        property.setMax(high);
        property.setDefaultValue(value);
        property.setValue(value);
        property.setParamLongName(name);
    }

    Tovra_AnimKnob& addDial(double left, Orbel::ParameterProperty& property)
    {
        auto* const dial = new Tovra_AnimKnob({left, 16, left + dialSide, 16 + dialSide}, nullptr, 0,
                                              dialPictures, dialSide, dials.bitmap(), CPoint(), &property);
        addView(dial);
        return *dial;
    }
    void addDials()
    {
        addDial(0, level).setCircularHit(true);
        addDial(96, time).deadZone().isOn = true;
        addDial(192, count).setSteps(5);
        addDial(288, level).setEnabled(false);
        auto* const animated = new CAnimKnob({384, 16, 384 + dialSide, 16 + dialSide}, nullptr, 0,
                                             dialPictures, dialSide, dials.bitmap());
        animated->setAttachedProperty(&level);
        addView(animated);
        auto* const plain =
            new CKnob({480, 16, 480 + dialSide, 16 + dialSide}, nullptr, 0, dials.bitmap(), nullptr);
        plain->setInset(5.0);
        plain->setHandleRadius(4.0);
        plain->setColorHandle(accent);
        plain->setAttachedProperty(&time);
        addView(plain);
    }
    void addButtons()
    {
        for (const auto mode : {Tovra_ActionButton::kToggle, Tovra_ActionButton::kMomentary})
        {
            const double left = 96.0 * int(mode) + 12.0;
            auto* const button = new Tovra_ActionButton({left, 128, left + buttonSide, 128 + buttonSide},
                                                        nullptr, 0, buttons.bitmap(), mode, true, 4.0f);
            button->setAttachedProperty(&power);
            addView(button);
        }
    }
    static void color(CParamDisplay& display)
    {
        display.setBackColor(panel);
        display.setFrameColor(edge);
        display.setFontColor(ink);
        display.setFont(kNormalFont, 12);
        display.setHoriAlign(kTextLeft);
    }
    void addMenus()
    {
        static const char* const titles[] = {"None", "One", "Two", "Three", "Four"};
        auto* const menu = new COptionMenu({192, 132, 328, 156}, &count, titles, 5);
        color(*menu);
        addView(menu);
        auto* const nested = new COptionMenu({352, 132, 488, 156});
        auto* const below = new COptionMenu({});
        below->addEntry("Straight");
        below->addEntry("Triplet");
        nested->addEntry("Whole notes");
        nested->addSeparator();
        nested->addEntry(below, "Eighths");
        below->forget();
        nested->setStyle(CParamDisplay::kCheckStyle);
        nested->setCurrent(0);
        color(*nested);
        addView(nested);
    }
    template <class Info>
    CParamDisplay& addBox(double left, Orbel::ParameterProperty& property)
    {
        Info info;
        info.rect = {left, 210, left + 88, 234};
        info.attachedProperty = &property;
        CParamDisplay* made = nullptr;
        if constexpr (std::is_same_v<Info, CTextLabelInfo>)
            made = new Tovra_ParamDisplay(info);
        else
            made = new Tovra_TextEdit(info);
        color(*made);
        made->setHoriAlign(kTextCenter);
        addView(made);
        return *made;
    }
    void addBoxes()
    {
        addBox<Tovra_TextEdit::CInfo>(0, level);
        addBox<Tovra_TextEdit::CInfo>(96, time);
        addBox<Tovra_TextEdit::CInfo>(192, count);
        addBox<CTextLabelInfo>(288, level).setStyle(CParamDisplay::kNoFrame);
        auto* const text = new CTextEdit({384, 210, 560, 234}, nullptr, 0, "a name, 100%s");
        color(*text);
        addView(text);
    }

    Strip dials{dialSide, dialPictures, drawDial};
    Strip buttons{buttonSide, 2, drawPower};
    Orbel::ParameterProperty level, time, count, power;
};

void drawCaptions(CDrawContext& context)
{
    const struct
    {
        double left, top;
        const char* text;
    } captions[] = {{0, 80, "round"},
                    {96, 80, "with a detent"},
                    {192, 80, "5 steps"},
                    {288, 80, "disabled"},
                    {384, 80, "frame by frame"},
                    {480, 80, "around"},
                    {0, 166, "on and off"},
                    {96, 166, "held"},
                    {192, 166, "of a parameter"},
                    {352, 166, "with a submenu"},
                    {0, 240, "drag, or double-click to type"},
                    {288, 240, "text only"},
                    {384, 240, "click to type"},
                    {192, 290, "drawn without pictures"}};
    for (const auto& each : captions)
        drawCaption(context, each.text, {each.left, each.top, each.left + 170, each.top + 16});
}
}

void fillControls(CFrame& frame)
{
    frame.addView(new Sketch({24, 60, 620, 400}, drawCaptions));
    frame.addView(new Board({24, 60, 620, 400}));
}
}
