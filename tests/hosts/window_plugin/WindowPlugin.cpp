// SPDX-License-Identifier: GPL-3.0-or-later
// A small plug-in with a window, to try the adapters and the editor shell in hosts: it multiplies by LEVEL.
//
// The window is 300 by 200 units on dark blue. What is bound to LEVEL is a dial of two pictures, black and
// red, so that the red of a pixel is the value. Below it stand a box for TIME, a switch, and a menu for
// STEPS; LINK is a switch that no host automates.
#include "Orbel/contract/OrbelFactory.h"
#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/shell/CTovraneEditor.h"
#include "Tovrane/views/controls/COptionMenu.h"
#include "Tovrane/views/controls/CTextEdit.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/controls/Tovra_AnimKnob.h"
#include "editor/wireUp.h"

#include <cstring>
#include <vector>

using namespace Tovra;

namespace
{
enum Parameter : int
{
    level,
    time,
    steps,
    power,
    automatable, // so many are
    link = automatable,
    parameterCount
};

// Pictures of one colour each, below one another.
class Colors
{
public:
    explicit Colors(const std::vector<CColor>& colors)
    {
        memory.setSize(side, side * unsigned(colors.size()));
        unsigned char* pixel = memory.getPixelPtr();
        for (const CColor& color : colors)
            for (unsigned i = 0; i < side * side; ++i, pixel += 4)
                pixel[0] = color.blue, pixel[1] = color.green, pixel[2] = color.red, pixel[3] = 255;
        picture->attachImg(&memory);
    }
    CBitmap* bitmap() { return picture.get(); }
    static constexpr unsigned side = 40;

private:
    CMACBitmap memory;
    Kept<CBitmap> picture = Kept<CBitmap>::adopt(new CBitmap(nullptr, true));
};

class Editor : public CTovraneEditor
{
public:
    Editor(Orbel::OrbelOS& of, std::vector<Orbel::ParameterProperty>& parameters)
        : CTovraneEditor(&of), properties(parameters)
    {
        setSize(300, 200);
    }
    ~Editor() override { Editor::close(); }

protected:
    void prepeareGUI(CFrame* made) override
    {
        made->setBackgroundColor({20, 24, 60, 255});
        made->addView(new Tovra_AnimKnob({10, 10, 50, 50}, nullptr, 0, 2, Colors::side, dial.bitmap(),
                                         CPoint(), &properties[level]));
        addBox(*made, {10, 70, 110, 94}, properties[time]);
        addButton(*made, {10, 110, 50, 150}, properties[power]);
        addButton(*made, {70, 110, 110, 150}, properties[link]);
        static const char* const titles[] = {"None", "One", "Two", "Three", "Four"};
        made->addView(new COptionMenu({130, 70, 280, 94}, &properties[steps], titles, 5));
    }

private:
    static void addBox(CFrame& to, const CRect& place, Orbel::ParameterProperty& property)
    {
        Tovra_TextEdit::CInfo info;
        info.rect = place;
        info.attachedProperty = &property;
        to.addView(new Tovra_TextEdit(info));
    }
    void addButton(CFrame& to, const CRect& place, Orbel::ParameterProperty& property)
    {
        auto* const button = new Tovra_ActionButton(place, nullptr, 0, lamp.bitmap(),
                                                    Tovra_ActionButton::kToggle, false, 1.0f);
        button->setAttachedProperty(&property);
        to.addView(button);
    }

    std::vector<Orbel::ParameterProperty>& properties;
    Colors dial{{kBlackCColor, kRedCColor}};
    Colors lamp{{kGreyCColor, kGreenCColor}};
};

class Effect : public Orbel::OrbelOS
{
public:
    explicit Effect(Orbel::OrbelCallback* asked) : OrbelOS(asked), properties(parameterCount)
    {
        using Unit = Orbel::ParameterUnitType;
        setUp(level, "LEVEL", 1.0f, 0.5f, Unit::SignedPercent);
        setUp(time, "TIME", 500.0f, 120.0f, Unit::Milliseconds);
        setUp(steps, "STEPS", 4.0f, 1.0f, Unit::Integer);
        setUp(power, "POWER", 1.0f, 1.0f, Unit::Switch);
        setUp(link, "LINK", 1.0f, 0.0f, Unit::Switch);
        editor = std::make_unique<Editor>(*this, properties);
    }
    ~Effect() override { editor.reset(); } // reads the parameters to the last

    using OrbelOS::getParameterProperty;
    int getParameterCount() override { return automatable; }
    Orbel::ParameterProperty* getParameterProperty(int index) override
    {
        return index >= 0 && index < automatable ? &properties[size_t(index)] : nullptr;
    }
    void processAudio(Orbel::AudioBusInformation& info) override
    {
        const float gain = properties[level].getCurrentValue();
        for (int i = 0; i < info.numSamples; ++i)
        {
            info.outputs[0].left[i] = gain * info.inputs[0].left[i];
            info.outputs[0].right[i] = gain * info.inputs[0].right[i];
        }
    }
    long getDataChunk(char** chunk) override
    {
        for (size_t i = 0; i < parameterCount; ++i)
            state[i] = properties[i].getCurrentValue();
        *chunk = reinterpret_cast<char*>(state);
        return sizeof state;
    }
    void setDataChunk(char* chunk, long size) override
    {
        if (size != sizeof state)
            return;
        std::memcpy(state, chunk, sizeof state);
        for (size_t i = 0; i < parameterCount; ++i)
            properties[i].setValue(state[i]);
    }

private:
    void setUp(Parameter which, const char* name, float maximum, float value, Orbel::ParameterUnitType unit)
    {
        Orbel::ParameterPropertySetup row;
        row.id = row.longName = row.shortName = name;
        row.maximum = maximum;
        row.value = row.defaultValue = value;
        row.unitType = unit;
        row.automatable = which < automatable;
        row.parameterId = which;
        properties[which].setup(&row);
        properties[which].setAutomationIndex(which < automatable ? which : -1);
    }

    std::vector<Orbel::ParameterProperty> properties;
    float state[parameterCount] = {};
};
}

void wireUp()
{
    useHeadlessFrames();
    useX11Frames();
    useMessageViews();
}

Orbel::OrbelOS* createOrbelInstance(Orbel::OrbelCallback* callback, unsigned long)
{
    return new Effect(callback);
}

void getOrbelPluginList(Orbel::OrbelPluginList& list)
{
    Orbel::OrbelFX_Description description{
        {'W', 'N', 'D', 'W'}, "Window Test", "Window Test", "Us", 1, 1, 1, "1.0", 0, true, 1, 1};
    description.type = Orbel::OrbelFX_Description::effect;
    list.push_back(description);
}

Orbel::OrbelPluginList* getOrbelPluginListPTR()
{
    static Orbel::OrbelPluginList list;
    list = {};
    getOrbelPluginList(list);
    return &list;
}
