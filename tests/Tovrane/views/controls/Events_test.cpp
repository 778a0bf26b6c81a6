// SPDX-License-Identifier: GPL-3.0-or-later
// What a user does to each control, as a script, against what host, listener, read-out and cursor get.
//
// Steps are divided by "; ":
//   at X Y, leave                           the pointer
//   press B, double B, release B, lose      B is left, middle or right; lose: the window loses the mouse
//   hold shift|command|alt|control|none     from here on
//   wheel N, key NAME                       upwards is positive
//   type TEXT, field return|escape          in the field that is open
//   pick ROW                                answers the next menu
//   set V, hide, show, disable, remove, close
//   look, shot                              note value, cursor and read-out; whether the picture has changed
//
// Results: "(" is the start of a gesture for listener and host, in this order, ")" its end for host and
// listener, "=6" the value that the host gets and then the listener, "~6" one that only the host gets,
// "<6 3 Level: 6.0>" what look saw.
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/platform/headless/HeadlessTextEdit.h"
#include "Tovrane/views/controls/COptionMenu.h"
#include "Tovrane/views/controls/CTextEdit.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/controls/Tovra_AnimKnob.h"
#include "Tovrane/views/tree/EditLog.h"

#include <cmath>
#include <cstring>

using namespace Tovra;

namespace
{
const std::map<std::string, long> buttonBits = {
    {"left", kButtonLeft}, {"middle", kButtonMiddle}, {"right", kButtonRight}};
const std::map<std::string, std::pair<long, int>> modifierBits = {{"none", {0, 0}},
                                                                  {"shift", {kModShift, kKeyShift}},
                                                                  {"command", {kModCommand, kKeyCommand}},
                                                                  {"alt", {kModAlt, kKeyAlt}},
                                                                  {"control", {kModControl, kKeyControl}}};
const std::map<std::string, int> keys = {
    {"up", kVirtualUp},   {"down", kVirtualDown},   {"left", kVirtualLeft},    {"right", kVirtualRight},
    {"tab", kVirtualTab}, {"space", kVirtualSpace}, {"return", kVirtualReturn}};

std::string number(double value)
{
    std::ostringstream text;
    text << std::round(value * 1000.0) / 1000.0 + 0.0;
    return text.str();
}

class ControlEvents
{
public:
    explicit ControlEvents(const std::string& kind)
    {
        property.setUnitType(kind == "count" ? Orbel::ParameterUnitType::Integer
                                             : Orbel::ParameterUnitType::PlainNumber);
        property.setParamLongName("Level");
        property.setMax(kind == "stepped" ? 4.0f : kind == "held" || kind == "flipped" ? 1.0f : 10.0f);
        property.setDefaultValue(2.5f);
        property.setValue(kind == "held" || kind == "flipped" ? 0.0f : kind == "stepped" ? 2.0f : 5.0f);
        control = made(kind);
        control->remember();
        frame->addView(control);
        control->setListener(&host);
        control->setAttachedProperty(&property);
    }
    ~ControlEvents()
    {
        frame->close();
        control->forget();
    }

    std::string play(const std::string& script)
    {
        std::istringstream steps(script);
        for (std::string step; std::getline(steps >> std::ws, step, ';');)
            perform(step);
        return results();
    }

private:
    CControl* made(const std::string& kind)
    {
        const CRect rect(10, 10, 50, 50);
        if (kind == "box" || kind == "count")
        {
            Tovra_TextEdit::CInfo info;
            info.rect = rect;
            return new Tovra_TextEdit(info);
        }
        if (kind == "menu")
        {
            auto* const menu = new COptionMenu(rect);
            const auto below = Kept<COptionMenu>::adopt(new COptionMenu(CRect()));
            below->addEntry("Deep");
            for (const char* title : {"A", "B", "C", "D"})
                menu->addEntry(title);
            menu->addSeparator(1);
            menu->addEntry(below.get(), "More");
            menu->addEntry("E");
            return menu;
        }
        if (kind == "held" || kind == "flipped")
            return new Tovra_ActionButton(rect, nullptr, 0, nullptr,
                                          Tovra_ActionButton::Mode(kind == "flipped"), false, 1.0f);
        if (kind == "knob")
            return new CKnob(rect, nullptr, 0, nullptr, nullptr);
        auto* const dial = new Tovra_AnimKnob(rect, nullptr, 0, 3, 40.0, nullptr, {}, nullptr);
        dial->setSteps(kind == "stepped" ? 5 : 0);
        dial->deadZone().isOn = kind == "zoned";
        dial->setCircularHit(kind == "round");
        return dial;
    }

    void perform(const std::string& step)
    {
        std::istringstream in(step);
        std::string verb, word;
        in >> verb;
        WindowEvents& user = window().events();
        if (verb == "at")
        {
            in >> place.x >> place.y;
            user.move(place, held | modifiers.first);
        }
        else if (verb == "press" || verb == "double" || verb == "release")
        {
            in >> word;
            const long bit = buttonBits.at(word);
            held = verb == "release" ? held & ~bit : held | bit;
            if (verb == "release")
                user.release(place, bit | modifiers.first);
            else
                user.press(place, bit | modifiers.first, verb == "double" ? 2 : 1);
        }
        else if (verb == "hold" && in >> word)
            modifiers = modifierBits.at(word);
        else if (verb == "key" && in >> word)
        {
            TovraKeyCode code;
            code.virtualKey = std::uint8_t(keys.at(word));
            code.modifiers = std::uint8_t(modifiers.second);
            user.keyDown(code);
        }
        else if (double amount = 0.0; (verb == "wheel" || verb == "set" || verb == "pick") && in >> amount)
        {
            if (verb == "wheel")
                user.wheel(place, 0, amount, modifiers.first);
            else if (verb == "set")
                property.setValue(float(amount));
            else
                window().onMenu = [=](IMenu& menu) { return MenuChoice{&menu, long(amount)}; };
        }
        else if (verb == "type" || verb == "field")
        {
            std::getline(in >> std::ws, word);
            HeadlessTextEdit* const field = window().textEdit();
            if (field == nullptr)
                host.log.push_back("no field");
            else if (verb == "type")
                field->type(word.c_str());
            else
                word == "return" ? field->pressReturn() : field->pressEscape();
        }
        else
            performPlain(verb);
    }

    void performPlain(const std::string& verb)
    {
        const std::map<std::string, std::function<void()>> verbs = {
            {"leave", [&] { window().events().leave(place, modifiers.first); }},
            {"lose", [&] { window().events().releaseAll(); }},
            {"hide", [&] { control->setVisible(false); }},
            {"show", [&] { control->setVisible(true); }},
            {"disable", [&] { control->setEnabled(false); }},
            {"remove", [&] { frame->removeView(control); }},
            {"close", [&] { frame->close(); }},
            {"shot",
             [&]
             {
                 frame->idle();
                 IOSBitmap& bitmap = *frame->getFrameBitmap();
                 const auto* const bytes = reinterpret_cast<const char*>(bitmap.getPixelPtr());
                 const std::string now(bytes, bitmap.getRowBytes() * bitmap.getHeight());
                 host.log.push_back(std::exchange(picture, now) == now ? "same" : "new");
             }},
            {"look",
             [&]
             {
                 const std::string readOut = frame->texts.empty() ? "-" : frame->texts.back();
                 host.log.push_back("<" + number(property.getCurrentValue()) + " " +
                                    std::to_string(isOpen() ? int(window().cursor()) : -1) + " " + readOut +
                                    ">");
             }},
        };
        verbs.at(verb)();
    }

    std::string results()
    {
        std::string text;
        for (const std::string& entry : taken(host.log))
            text += entry.rfind("host performs ", 0) == 0 ? "~" + number(std::stod(entry.substr(14))) + " "
                                                          : entry + " ";
        for (const auto& [longForm, shortForm] :
             {std::pair{"listener begins host begins", "("}, {"host ends listener ends", ")"}})
            for (std::size_t at; (at = text.find(longForm)) != std::string::npos;)
                text.replace(at, std::strlen(longForm), shortForm);
        for (std::size_t at; (at = text.find(" changed")) != std::string::npos;)
        {
            text.erase(at, 8);
            text[text.rfind('~', at)] = '=';
        }
        return text.substr(0, text.empty() ? 0 : text.size() - 1);
    }

    bool isOpen() { return HeadlessFrame::of(*frame.get()) != nullptr; }
    HeadlessFrame& window() { return *HeadlessFrame::of(*frame.get()); }

    Host host;
    Orbel::ParameterProperty property;
    Kept<ReadOutFrame> frame =
        Kept<ReadOutFrame>::adopt(new ReadOutFrame(CRect(0, 0, 100, 100), nullptr, &host));
    CControl* control = nullptr;
    std::string picture;
    CPoint place{30, 30};
    long held = 0;
    std::pair<long, int> modifiers;
};

struct Row
{
    const char* kind;
    const char* script;
    const char* results;
};

void playAll(std::initializer_list<Row> rows)
{
    for (const Row& row : rows)
        EXPECT_EQ(ControlEvents(row.kind).play(row.script), row.results) << row.kind << ": " << row.script;
}
}

TEST(ControlEvents, DragsAreOneGestureInTheirSlope)
{
    playAll({
        {"dial", "press left; at 30 10; at 30 -500; at 30 50; release left", "( =6 =10 =4 ~4 )"},
        {"dial", "press right; at 30 10; release right", "( =5.1 ~5.1 )"},
        {"dial", "hold shift; press left; at 30 10; release left", "( =5.1 ~5.1 )"},
        {"dial", "hold control; press left; at 30 10; at 30 -10; release left", "( =5.1 =5.2 ~5.2 )"},
        {"dial",
         "press left; at 30 10; hold shift; at 30 10; at 30 9; at 30 -11; hold none; at 30 -10; at 30 -30; "
         "lose",
         "( =6 =6.05 =6.15 =6.145 =7.145 ~7.145 )"},
        {"dial", "press left; at 30 30; release left", "( ~5 )"},
        {"zoned", "press left; at 30 26; at 30 22; release left", "( =5.1 ~5.1 )"},
        {"zoned", "set 4; press left; at 30 11; at 30 9; at 30 -2; at 30 -8; lose", "( =4.95 =5 =5.3 ~5.3 )"},
        {"stepped", "press left; at 30 20; at 30 -10; at 30 -60; at 30 -500; release left", "( =3 =4 ~4 )"},
        {"stepped", "wheel 1; wheel -2; hold shift; key up", "( =3 ) ( =1 ) ( =2 )"},
        {"round", "at 12 12; press left; at 12 0; release left; wheel 1", ""},
        {"knob", "press left; at 11 30; release left", "( =8.333 =1.667 ~1.667 )"},
        {"knob", "hold alt; press left; at 40 20; release left", "( =6 ~6 )"},
        {"box", "press left; at 30 10; hold shift; at 30 9; release left", "( =6 =6.05 )"},
        {"box", "press right; at 30 10; release right", "( =5.1 )"},
        {"box", "double right; at 30 10; release right", "( =5.1 )"},
        {"count", "press left; at 30 10; release left", "( =6 )"},
    });
}

TEST(ControlEvents, AGestureEndsOnceAndByItsOwnButton)
{
    for (const char* kind : {"dial", "knob", "box"})
        for (const char* end :
             {"release left", "lose", "hide; at 30 0; show", "disable; at 30 0", "remove", "close"})
        {
            SCOPED_TRACE(std::string(kind) + ": " + end);
            ControlEvents controls(kind);
            const std::string open = controls.play(
                "press left; press right; at 30 10; press middle; release middle; release right");
            EXPECT_EQ(std::count(open.begin(), open.end(), '('), 1) << open;
            EXPECT_EQ(open.find(')'), std::string::npos) << open;
            const std::string ended = controls.play(end);
            EXPECT_EQ(ended.find_first_of("(="), std::string::npos) << ended;
            EXPECT_EQ(ended.find(')'), ended.size() - 1) << ended;
        }
}

TEST(ControlEvents, WheelKeysAndClicksAreWholeGestures)
{
    for (const char* kind : {"dial", "knob", "box"})
        playAll({
            {kind, "wheel 1", "( =6 )"},
            {kind, "hold shift; wheel -1", "( =4.9 )"},
            {kind, "wheel 100; wheel 1", "( =10 ) ( )"},
            {kind, "at 90 90; wheel 1", ""},
            {kind, "press left; wheel 1; key up; lose",
             kind[0] == 'd'   ? "( ~5 )"
             : kind[0] == 'k' ? "( =8.333 ~8.333 )"
                              : "( )"},
            {kind, "key tab; key up; key right; key left; key down", "( =6 ) ( =7 ) ( =6 ) ( =5 )"},
            {kind, "key tab; hold shift; key down", "( =4.9 )"},
            {kind, "key up", ""},
            {kind, "press middle; release middle", "( =2.5 )"},
            {kind, "hold command; press left; at 30 0; release left", "( =2.5 )"},
            {kind, "hold shift; press middle; release middle", ""},
            {kind, "disable; wheel 1; press left; at 30 0; release left; key tab; key up", ""},
            {kind, "hide; wheel 1; press left; release left", ""},
        });
}

// The first "~" is the value before the press.
TEST(ControlEvents, ButtonsAreHeldOrFlipped)
{
    playAll({
        {"held", "press left; look; release left; look", "( ~0 =1 <1 0 Level: 1.0> =0 ) <0 0 Level: 0.0>"},
        {"held", "press left; at 90 90; release left; look", "( ~0 =1 =0 ) <0 0 >"},
        {"held", "press left; hide", "( ~0 =1 =0 )"},
        {"held", "press left; disable", "( ~0 =1 =0 )"},
        {"held", "key tab; key space", "( ~0 =1 =0 )"},
        {"held", "press middle; release middle", ""},
        {"flipped", "press left; release left; press right; release right", "( ~0 =1 ) ( ~1 =0 )"},
        {"flipped", "press left; at 90 90; release left", "( ~0 =1 )"},
        {"flipped", "press left; press right; release right; remove", "( ~0 =1 )"},
        {"flipped", "key tab; key return; key return", "( ~0 =1 ) ( ~1 =0 )"},
        {"flipped", "disable; press left; release left; key tab; key space", ""},
    });
}

TEST(ControlEvents, MenusGiveTheNumberOfTheEntry)
{
    playAll({
        {"menu", "pick 2; press left; release left; look", "( =1 ) <1 0 ->"},
        {"menu", "pick 1; press left; release left", ""},
        {"menu", "pick 5; press left; release left", ""},
        {"menu", "pick 6; press right; release right", "( =4 )"},
        {"menu", "pick 2; hold control; press left; release left", "( =1 )"},
        {"menu", "pick 2; press middle; release middle", ""},
        {"menu", "set 2.99; key tab; key up; key up; key left; key up; key down",
         "( =2 ) ( =1 ) ( =0 ) ( =1 )"},
        {"menu", "set 2.99; key tab; key right; key down", "( =4 )"},
        {"menu", "key tab; pick 0; key return", "( =0 )"},
        {"menu", "disable; pick 0; press left; release left; key tab; key down", ""},
    });
}

TEST(ControlEvents, TypingIsOneGestureOrNone)
{
    playAll({
        {"box", "double left; release left; type 7,25; field return; look", "( =7.25 ) <7.25 0 Level: 7.2>"},
        {"box", "double left; release left; type 7.25; at 90 90; press left; release left", "( =7.25 )"},
        {"box", "double left; release left; type 7.25; field escape; look", "<5 0 ->"},
        {"box", "double left; release left; type 7.25; remove", ""},
        {"box", "double left; release left; type 7.25; close", ""},
        {"box", "double left; release left; field return", ""},
        {"box", "double left; release left; type abc; field return; look", "<5 0 ->"},
        {"box", "double left; release left; type 5.00; field return", ""},
        {"box", "double left; release left; type 1e9; field return", "( =10 )"},
        {"box", "set 10; double left; release left; type 1e9; field return", ""},
        {"box", "double left; release left; wheel 1; set 3; type 4; field return", "( =4 )"},
        {"box", "key tab; key return; type 9; field return; key up", "( =9 )"},
        {"box", "disable; double left; type 9", "no field"},
        {"count", "double left; release left; type 3.7; field return", "( =4 )"},
    });
}

TEST(ControlEvents, TheReadOutFollowsThePointerAndTheCursorTheDrag)
{
    for (const char* kind : {"dial", "knob", "box"})
        playAll({
            {kind, "look; at 20 20; look; at 90 90; look", "<5 0 -> <5 0 Level: 5.0> <5 0 >"},
            {kind, "at 20 20; wheel 1; look; leave; look", "( =6 ) <6 0 Level: 6.0> <6 0 >"},
            {kind, "disable; at 20 20; look", "<5 0 ->"},
        });
    playAll({
        {"dial", "press left; at 30 10; leave; look; at 90 10; release left; look",
         "( =6 <6 0 Level: 6.0> ~6 ) <6 0 >"},
        {"box", "press left; look; at 30 10; leave; look; at 90 10; release left; look",
         "( <5 3 -> =6 <6 3 Level: 6.0> ) <6 0 >"},
        {"box", "press left; at 30 10; hide; look; release left; at 90 90; look",
         "( =6 ) <6 0 Level: 6.0> <6 0 >"},
        {"round", "at 12 12; look; at 30 30; look; at 48 48; look", "<5 0 -> <5 0 Level: 5.0> <5 0 >"},
    });
}

TEST(ControlEvents, TabShowsTheFocusAndLeavesIt)
{
    for (const char* kind : {"dial", "stepped", "knob", "box", "held", "flipped", "menu"})
        playAll({{kind, "shot; shot; key tab; shot; key tab; shot", "new same new new"}});
}
