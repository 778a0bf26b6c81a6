// SPDX-License-Identifier: GPL-3.0-or-later
// An editor with one control of each kind, and an effect whose host writes down what it hears. In units:
//
//   dial LEVEL 0..10     10,10  to 50,50
//   switch POWER         60,10  to 92,42
//   menu STEPS 0..4      110,10 to 200,30
//   value LEVEL          110,40 to 200,60
//   text                 110,70 to 200,90
//   asks when pressed    210,10 to 290,30     left a question, right a message, middle for a file
//   opens a menu         210,40 to 290,60     with checked, disabled and submenu rows
#pragma once

#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Sonvex/MessageBox.h"
#include "Tovrane/shell/CTovraneEditor.h"
#include "Tovrane/views/controls/CFileSelector.h"
#include "Tovrane/views/controls/COptionMenu.h"
#include "Tovrane/views/controls/CTextEdit.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/controls/Tovra_AnimKnob.h"
#include "tools/shot/ShotOwner.h"

#include <sstream>

struct SmallEffect : Orbel::OrbelCallback, Orbel::OrbelOS
{
    SmallEffect() : OrbelOS(this)
    {
        const struct
        {
            const char* id;
            float maximum, value;
            Orbel::ParameterUnitType unit;
        } rows[] = {{"LEVEL", 10.0f, 5.0f, Orbel::ParameterUnitType::PlainNumber},
                    {"POWER", 1.0f, 0.0f, Orbel::ParameterUnitType::Switch},
                    {"STEPS", 4.0f, 1.0f, Orbel::ParameterUnitType::Integer}};
        for (int i = 0; i < 3; ++i)
        {
            Orbel::ParameterPropertySetup row;
            row.id = row.longName = row.shortName = rows[i].id;
            row.parameterId = i;
            row.maximum = rows[i].maximum;
            row.automatable = true;
            properties[i].setup(&row);
            properties[i].setUnitType(rows[i].unit);
            properties[i].setDefaultValue(2.0f);
            properties[i].setValue(rows[i].value);
        }
    }
    int getParameterCount() override { return 3; }
    Orbel::ParameterProperty* getParameterProperty_automateable(int i) override { return &properties[i]; }
    bool CB_beginEdit(int i) override { return note("begin", i); }
    bool CB_endEdit(int i) override { return note("end", i); }
    void CB_performEdit(int i, float value) override { note("perform", i, ' ', value); }

    template <typename... Parts>
    bool note(const char* word, int i, Parts... parts)
    {
        static const char* const ids[] = {"LEVEL", "POWER", "STEPS"};
        std::ostringstream text;
        text << word << ' ' << ids[i];
        static_cast<void>((text << ... << parts));
        log.push_back(text.str());
        return true;
    }

    Orbel::ParameterProperty properties[3];
    std::vector<std::string> log;
};

class ReadOutFrame : public Tovra::CFrame
{
public:
    using CFrame::CFrame;
    void setDataReadOutText(const char* shown) override { text = shown; }
    std::string text;
};

// A view that does something when it is pressed.
class PressView : public Tovra::CView
{
public:
    using Press = std::function<void(long buttons)>;
    PressView(const Tovra::CRect& rect, Press does) : CView(rect), press(std::move(does)) {}
    Tovra::MouseEventResult onMouseDown(Tovra::CPoint&, const long& buttons) override
    {
        press(buttons);
        return Tovra::kMouseHandled;
    }
    CView* newCopy() const override { return nullptr; }

private:
    Press press;
};

class SmallEditor : public Tovra::CTovraneEditor, public lodex::ShotOwner
{
public:
    explicit SmallEditor(SmallEffect& shown) : CTovraneEditor(&shown), effect(shown) { setSize(300, 175); }
    ~SmallEditor() override { close(); }

    Tovra::CFrame* frame() override { return getFrame(); }
    void idle() override { CTovraneEditor::idle(); }
    bool idlesItself() const override { return true; }
    std::string readOut() const override { return static_cast<ReadOutFrame*>(getFrame())->text; }

    SmallEffect& effect;
    std::vector<std::string> heard; // what the user answered
    Tovra::Tovra_AnimKnob* dial = nullptr;
    Tovra::CTextEdit* name = nullptr;
    int idles = 0;

protected:
    void onIdle() override { ++idles; }
    Tovra::CFrame* getNewCreateFrame(const Tovra::CRect& rect, void* parent, CTovraneEditor* editor) override
    {
        return new ReadOutFrame(rect, parent, editor);
    }
    void prepeareGUI(Tovra::CFrame* made) override
    {
        auto& [level, power, steps] = effect.properties;
        dial = new Tovra::Tovra_AnimKnob({10, 10, 50, 50}, nullptr, 0, 3, 40.0, nullptr, {}, &level);
        made->addView(dial);
        auto* const button = new Tovra::Tovra_ActionButton({60, 10, 92, 42}, nullptr, 0, nullptr,
                                                           Tovra::Tovra_ActionButton::kToggle, false, 1.0f);
        button->setAttachedProperty(&power);
        made->addView(button);
        static const char* const titles[] = {"None", "One", "Two", "Three", "Four"};
        made->addView(new Tovra::COptionMenu({110, 10, 200, 30}, &steps, titles, 5));
        Tovra::Tovra_TextEdit::CInfo box;
        box.rect = {110, 40, 200, 60};
        box.attachedProperty = &level;
        made->addView(new Tovra::Tovra_TextEdit(box));
        name = new Tovra::CTextEdit({110, 70, 200, 90}, nullptr, 0, "name");
        made->addView(name);
        made->addView(new PressView({210, 10, 290, 30}, [this](long buttons) { ask(buttons); }));
        made->addView(new PressView({210, 40, 290, 60}, [this](long) { openMenu(); }));
    }

private:
    void ask(long buttons)
    {
        if ((buttons & Tovra::kButtonMiddle) != 0)
            return Tovra::CFileSelector(*getFrame(), {})
                .run(Tovra::FileSelectorOptions::openFile, [this](const std::vector<std::string>& paths)
                     { heard.push_back("file " + (paths.empty() ? "none" : paths[0])); });
        const bool isQuestion = (buttons & Tovra::kButtonLeft) != 0;
        Sonvex::openMessageBox(getFrame(), isQuestion ? Sonvex::kMessageBoxYesNo : Sonvex::kMessageBoxOk,
                               "Delete", "\"100%s\"?",
                               [this](int answer) { heard.push_back("answer " + std::to_string(answer)); });
    }
    void openMenu()
    {
        using Tovra::CMenuItem;
        Tovra::TovraContextInfo info;
        info.frame = getFrame();
        info.callback = [this](Tovra::COptionMenu& menu, long number)
        { heard.push_back("chose " + menu.getEntry(menu.rowOfNumber(number))->getTitle()); };
        const auto menu = Tovra::Kept<Tovra::Tovra_ContextMenu>::adopt(new Tovra::Tovra_ContextMenu(info));
        const auto below = Tovra::Kept<Tovra::COptionMenu>::adopt(new Tovra::COptionMenu(Tovra::CRect()));
        below->addEntry("Deep", -1, CMenuItem::kChecked);
        menu->addEntry("Copy");
        menu->addEntry("Paste", -1, CMenuItem::kDisabled | CMenuItem::kChecked);
        menu->addSeparator();
        menu->addEntry(below.get(), "More");
        menu->popUp();
    }
};
