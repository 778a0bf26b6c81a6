// SPDX-License-Identifier: GPL-3.0-or-later
// What scripts do to an editor: values, gestures in their order, read-outs, cursors, and what is recorded.
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/draw/PNGWriter.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "support/TempFolder.h"
#include "tools/common/ToolError.h"
#include "tools/shot/ShotPlayer.h"
#include "tools/shot/SmallEditor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lodex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

namespace
{
class ShotPlaying : public testing::Test
{
protected:
    ShotPlaying() { Tovra::useMessageViews(); }
    ~ShotPlaying() override { Sonvex::setMessageBoxPresenter(nullptr); }

    const ShotRecord& play(const std::string& script)
    {
        player.play(parseShotScript(script, "script"), "script");
        return player.record();
    }
    std::string errorOf(const std::string& script)
    {
        try
        {
            play(script);
        }
        catch (const ToolError& error)
        {
            return error.what();
        }
        return "none";
    }
    float level() const { return effect.properties[0].getCurrentValue(); }
    // What the host has heard. Of the values of one gesture the last one counts.
    Texts edits()
    {
        Texts result;
        for (const std::string& entry : std::exchange(effect.log, {}))
            if (!result.empty() && entry.starts_with("perform") && result.back().starts_with("perform"))
                result.back() = entry;
            else
                result.push_back(entry);
        return result;
    }
    Texts heard() { return std::exchange(editor.heard, {}); }

    VirtualTime time;
    SmallEffect effect;
    SmallEditor editor{effect};
    struct Opened
    {
        explicit Opened(SmallEditor& editor) { editor.open(nullptr); }
    } opened{editor};
    ShotPlayer player{editor, time};
};
}

TEST_F(ShotPlaying, StepsAreGesturesOnControls)
{
    const struct
    {
        const char* name;
        const char* script;
        const char* values;
        const char* edits;
    } cases[] = {
        {"drag", "move 30 30\npress left\nmove 30 10\nrelease left", "6 0 1",
         "begin LEVEL, perform LEVEL 0.6, end LEVEL"},
        {"fine by shift, held from here on",
         "move 30 30\nmodifiers shift\npress left\nmove 30 10\nrelease left\nmodifiers none\nwheel 30 30 1",
         "6.1 0 1", "begin LEVEL, perform LEVEL 0.51, end LEVEL, begin LEVEL, perform LEVEL 0.61, end LEVEL"},
        {"a press is where the pointer was moved last",
         "move 30 30\nwheel 150 20 1\npress middle\nrelease middle", "2 0 1",
         "begin LEVEL, perform LEVEL 0.2, end LEVEL"},
        {"a user's Control resets", "modifiers command\nmove 30 30\npress left\nrelease left", "2 0 1",
         "begin LEVEL, perform LEVEL 0.2, end LEVEL"},
        {"a second button changes nothing",
         "move 30 30\npress left\nmove 90 90\npress right\nrelease right\nmove 30 10\nrelease left", "6 0 1",
         "begin LEVEL, perform LEVEL 0.6, end LEVEL"},
        {"open at the end", "move 30 30\npress left\nmove 30 10", "6 0 1",
         "begin LEVEL, perform LEVEL 0.6, end LEVEL"},
        {"switch", "move 70 20\npress left\nrelease left", "5 1 1",
         "begin POWER, perform POWER 1, end POWER"},
        {"keys", "key tab\nkey up\nmodifiers shift\nkey down\nkey z", "5.9 0 1",
         "begin LEVEL, perform LEVEL 0.6, end LEVEL, begin LEVEL, perform LEVEL 0.59, end LEVEL"},
        {"chosen", "choose \"Three\"\nmove 150 20\npress left\nrelease left", "5 0 3",
         "begin STEPS, perform STEPS 0.75, end STEPS"},
        {"a menu that no line answers", "move 150 20\npress left\nrelease left", "5 0 1", ""},
        {"typed", "move 150 50\ndouble left\ntype 7.55\npress left\nrelease left\nkey backspace\nkey return",
         "7.5 0 1", "begin LEVEL, end LEVEL, begin LEVEL, perform LEVEL 0.75, end LEVEL"},
        {"given up", "move 150 50\ndouble left\ntype 7\nkey escape\nkey return", "5 0 1",
         "begin LEVEL, end LEVEL"},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.name);
        const float before[] = {5.0f, 0.0f, 1.0f};
        for (int i = 0; i < 3; ++i)
            effect.properties[i].setValue(before[i]);
        editor.getFrame()->setFocusView(nullptr);
        edits();
        play(std::string("modifiers none\n") + one.script);
        std::ostringstream values;
        values << level() << ' ' << effect.properties[1].getCurrentValue() << ' '
               << effect.properties[2].getCurrentValue();
        EXPECT_EQ(values.str(), one.values);
        std::string heardEdits;
        for (const std::string& edit : edits())
            heardEdits += (heardEdits.empty() ? "" : ", ") + edit;
        EXPECT_EQ(heardEdits, one.edits);
    }
}

TEST_F(ShotPlaying, TextIsTypedIntoTheOpenField)
{
    play("move 150 80\npress left\nrelease left\ntype Off-beat 100%s # 2\nkey home\nmodifiers command\nkey "
         "delete\n"
         "modifiers none\nkey left\ntype \xC3\xA4\nkey return\ntype x");
    EXPECT_STREQ(editor.name->getText(), "\xC3\xA4-beat 100%s # 2");
    play("move 150 80\npress left\nrelease left\nkey end\nkey backspace\nmove 5 170\npress left\nrelease "
         "left");
    EXPECT_STREQ(editor.name->getText(), "\xC3\xA4-beat 100%s # ") << "a click elsewhere commits";
}

TEST_F(ShotPlaying, ReadOutAndCursorFollowThePointer)
{
    EXPECT_EQ(play("move 30 30").readOut, "LEVEL: 5.0");
    EXPECT_EQ(play("move 70 20").readOut, "POWER: Off");
    EXPECT_EQ(play("leave").readOut, "");
    EXPECT_EQ(play("move 30 30\nmove -5 30").readOut, "") << "outside";
    EXPECT_EQ(play("move 150 50\npress left").cursor, Tovra::kCursorVSize);
    EXPECT_EQ(play("idle 0").cursor, Tovra::kCursorDefault) << "let go at the end";
    EXPECT_THAT(edits(), ElementsAre("begin LEVEL", "end LEVEL"));
    EXPECT_EQ(play("move 30 30\npress left\nmove 30 -30\nmove 30 -31\nrelease left").readOut, "")
        << "a drag that ends outside";
    EXPECT_THAT(edits(), ElementsAre("begin LEVEL", "perform LEVEL 0.805", "end LEVEL"));
}

TEST_F(ShotPlaying, AnswersWaitInOrderForWhatTheyAnswer)
{
    const std::string ask = "\nmove 250 20\npress left\nrelease left";
    const std::string tell = "\npress right\nrelease right";
    const std::string open = "\nmove 250 20\npress middle\nrelease middle";
    const std::string menu = "\nmove 250 50\npress right\nrelease right";
    play("answer yes\nfile /a b/1.fxb\nchoose \"More\" \"Deep\"\nanswer no\nchoose -\nanswer yes" + ask +
         tell + open + ask + menu + open + menu + "\nchoose \"Copy\"" + menu + menu + "\nchoose \"Paste\"" +
         menu + ask + ask + "\nfile /never\nchoose \"Never\"\nanswer yes");
    EXPECT_THAT(heard(), ElementsAre("answer 1", "answer 1", "file /a b/1.fxb", "answer 0", "chose Deep",
                                     "file none", "chose Copy", "answer 1", "answer 0"));
    const ShotRecord& record = player.record();
    EXPECT_EQ(record.menus.size(), 5u);
    EXPECT_THAT(record.menus[0], ElementsAre("Copy", "~ * Paste", "-", "More", "* Deep"));
    EXPECT_THAT(record.questions, testing::Each("Delete\n\"100%s\"?"));
    EXPECT_EQ(record.questions.size(), 4u);
    EXPECT_EQ(record.messages.size(), 1u);
    EXPECT_EQ(editor.getFrame()->getModalView(), nullptr);
}

TEST_F(ShotPlaying, TheGroundsMenuChangesTheScaleAndUnitsStay)
{
    play("choose \"200 %\"\nmove 150 150\npress right\nrelease right\nmove 30 30\npress left\nmove 30 "
         "10\nrelease left");
    EXPECT_EQ(editor.getFrame()->getScale(), 2.0);
    EXPECT_NEAR(level(), 6.0f, 1e-5);
    EXPECT_THAT(player.record().menus[0], testing::IsSupersetOf({"Window Size", "* 100 %", "200 %"}));
    Tovra::UserScale::choose(100);
}

TEST_F(ShotPlaying, TimeGoesByInIdleAloneAndWithoutWaiting)
{
    const int before = editor.idles;
    play("move 30 30\nwheel 30 30 1\nidle 10\nidle 10");
    EXPECT_EQ(editor.idles, before);
    play("idle 5");
    EXPECT_EQ(editor.idles, before + 1) << "every 25 ms, however it is cut up";
    play("idle 60000");
    EXPECT_EQ(editor.idles, before + 1 + 2400);
    EXPECT_EQ(time.milliseconds(), 60025);

    editor.dial->setEased(true);
    effect.properties[0].setValue(1.0f);
    const float start = editor.dial->getEasedValue();
    play("idle 50");
    EXPECT_LT(editor.dial->getEasedValue(), start);
    EXPECT_GT(editor.dial->getEasedValue(), 0.1f);
    play("idle 2000");
    EXPECT_FLOAT_EQ(editor.dial->getEasedValue(), 0.1f);
}

TEST_F(ShotPlaying, MessagesThatTimersAndOtherCodeOpenAreAnsweredToo)
{
    Tovra::RepeatingTimer later;
    later.start(40,
                [&]
                {
                    later.stop();
                    Sonvex::openMessageBox(editor.getFrame(), Sonvex::kMessageBoxYesNo, "", "Later?",
                                           [&](int answer)
                                           { editor.heard.push_back(std::to_string(answer)); });
                });
    play("answer yes\nidle 100");
    EXPECT_THAT(heard(), ElementsAre("1"));
    EXPECT_THAT(player.record().questions, ElementsAre("Later?"));
}

TEST_F(ShotPlaying, PicturesAreWrittenAtTheFramesScale)
{
    const TempFolder folder;
    editor.setContentScale(1.5);
    const std::string path = folder / "a b.png";
    play("move 30 30\npress left\nshot \"" + path + "\"");
    Tovra::IOSBitmap& picture = *editor.getFrame()->getFrameBitmap();
    EXPECT_EQ(picture.getWidth(), 450u);
    EXPECT_EQ(picture.getHeight(), 263u);
    const auto bytes = Tovra::writePNG(picture);
    EXPECT_EQ(folder.content("a b.png"), std::string(bytes.begin(), bytes.end()));
    EXPECT_THAT(errorOf("leave\nshot /no/such/folder/a.png"),
                HasSubstr("script:2: cannot write /no/such/folder"));
}

TEST_F(ShotPlaying, WhatCannotBePlayedIsNamedWithItsLine)
{
    EXPECT_THAT(errorOf("choose \"More\" \"Nope\"\nmove 250 50\npress left"),
                HasSubstr("script:3: the menu has no row \"Nope\"; there are \"Deep\""));
    EXPECT_THAT(errorOf("choose \"Copy\" \"Deep\"\nmove 250 50\npress right"),
                HasSubstr("no submenu \"Copy\""));
    for (const char* step : {"play a.wav 1", "bpm 120", "set LEVEL 1", "timebase 1/4"})
        EXPECT_THAT(errorOf(std::string("\n\n") + step), HasSubstr("script:3: this window has no host"));
    editor.close();
    EXPECT_EQ(errorOf("leave"), "script:1: the window has been closed");
}

// What belongs to the owner's host, in its order and with time in between.
TEST_F(ShotPlaying, StepsOfTheHostGoToTheOwner)
{
    struct Host : SmallEditor
    {
        using SmallEditor::SmallEditor;
        void play(const std::string& path, double seconds, ShotPlayer& running) override
        {
            running.idle(int(seconds * 1000.0));
            heard.push_back("play " + path);
        }
        void setTempo(double bpm) override { heard.push_back("bpm " + std::to_string(int(bpm))); }
        void setParameter(const std::string& id, const std::string& value) override
        {
            heard.push_back(id + '=' + value);
        }
        void setTimeBase(const std::string& base) override { heard.push_back(base); }
    } host(effect);
    host.open(nullptr);
    ShotPlayer hosts(host, time);
    const int before = time.milliseconds();
    hosts.play(parseShotScript("bpm 130\nplay loop.wav 0.5\nset LEVEL 3 # x\ntimebase 1/8T", "s"), "s");
    EXPECT_THAT(host.heard, ElementsAre("bpm 130", "play loop.wav", "LEVEL=3", "1/8T"));
    EXPECT_EQ(time.milliseconds() - before, 500);
}

TEST_F(ShotPlaying, TheRecordIsJson)
{
    ShotRecord record = play("choose -\nmove 250 50\npress right\nmove 30 30");
    record.messages.push_back("caf\xE9");
    EXPECT_EQ(
        toJson(record).dump(),
        R"({"readout":"LEVEL: 5.0","cursor":0,"menus":[["Copy","~ * Paste","-","More","* Deep"]],"questions":[],)"
        "\"messages\":[\"caf\xEF\xBF\xBD\"]}");
}
