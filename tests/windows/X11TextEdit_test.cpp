// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/x11/overlays/X11TextEdit.h"
#include "windows/FieldOwner.h"
#include "windows/OtherProgram.h"
#include "windows/WindowTest.h"

using namespace Tovra;

namespace
{
constexpr std::uint32_t backColour = 0x212021; // the FieldOwner's, which is whole on screens of 16 bits, too

class X11TextEditTest : public WindowTest
{
protected:
    X11TextEditTest()
    {
        openFrame();
        takeKeyboard();
        field.reset(window().createPlatformTextEdit(frame, &callback, view));
        field->setText("Gain");
    }
    ~X11TextEditTest() override { field.reset(); }

    bool becomes(const std::string& expected)
    {
        return until([&] { return expected == field->getText(); });
    }
    void expectAfter(const std::string& words, const std::string& expected)
    {
        user(words);
        EXPECT_TRUE(becomes(expected)) << words << " left " << field->getText();
    }

    FieldOwner callback;
    std::unique_ptr<IOSTextEdit> field;
};
}

TEST_F(X11TextEditTest, TakesWhatIsTyped)
{
    setLayout("de");                        // which has all of these keys
    expectAfter("key a key shift+b", "aB"); // in place of all, which is selected
    expectAfter("key BackSpace key period key KP_7 key Home key Delete", ".7");
    expectAfter("key End key shift+Left key adiaeresis", ".\xc3\xa4");
    expectAfter("key ctrl+a key x key F1 key ctrl+q key Up key y", "yx"); // F1 is the view's
    expectAfter("key End key space key z key ctrl+BackSpace", "yx ");
    EXPECT_FALSE(saw("key y 0 0")) << "a key of the field came to the views";
    EXPECT_TRUE(saw("key q 0 4")) << "what the field has no use for did not";
}

TEST_F(X11TextEditTest, CopiesCutsAndPastes)
{
    user("key ctrl+c");
    EXPECT_EQ(run("xclip -o -selection clipboard"), "Gain");
    EXPECT_EQ(run("xclip -o -selection clipboard -target TARGETS").find("TARGETS"), 0u);
    expectAfter("key ctrl+x key ctrl+v key ctrl+v", "GainGain");
    expectAfter("key shift+Left key shift+Left key ctrl+x key Home key ctrl+v", "inGainGa");
}

TEST_F(X11TextEditTest, PastesFromOtherPrograms)
{
    OtherProgram other;
    other.content = {{"UTF8_STRING", "a\nb\xc3\xa4 100%s\n"}};
    other.own(observer->atom(X11Atom::clipboard));
    expectAfter("key ctrl+a key ctrl+v", "a b\xc3\xa4 100%s");
    // A program of the wild, and a text that comes in pieces.
    ChildProcess large;
    ASSERT_TRUE(large.start({"sh", "-c", "head -c 1000000 /dev/zero | tr '\\0' x | xclip -quiet 2>&1"}, {}));
    EXPECT_TRUE(until([&] { return run("xclip -o").size() == 1000000; }));
    field->setText("");
    click(60, 50, 2);
    EXPECT_TRUE(becomes(std::string(255, 'x')));
}

// The question is asked by one field, which goes while another one is open; the answer comes then.
TEST_F(X11TextEditTest, TakesItsQuestionForTheClipboardWithIt)
{
    OtherProgram slow;
    slow.own(observer->atom(X11Atom::clipboard));
    user("key ctrl+v");
    EXPECT_TRUE(until([&] { return slow.asked.size() == 1; }));
    FieldOwner second;
    std::unique_ptr<IOSTextEdit> another(window().createPlatformTextEdit(frame, &second, view));
    another->setText("Another");
    field.reset();
    slow.write(slow.asked[0], slow.asked[0].target, 8, "late");
    slow.notify(slow.asked[0]);
    slow.server->sync();
    settle();
    EXPECT_STREQ(another->getText(), "Another");
    field.reset(window().createPlatformTextEdit(frame, &callback, view));
    user("key b");
    EXPECT_TRUE(becomes("b")) << "the field that was opened last has the keys";
    field.reset();
    user("key c");
    EXPECT_TRUE(until([&] { return another->getText() == std::string("c"); })) << "the one before has them";
}

// An owner goes on answering what was asked before.
TEST_F(X11TextEditTest, TakesTheAnswerToItsLastQuestionAlone)
{
    OtherProgram slow;
    slow.own(observer->atom(X11Atom::clipboard));
    const auto asksFor = [&](std::size_t questions)
    {
        user("key ctrl+v");
        return until([&] { return slow.asked.size() == questions; });
    };
    const auto beginPieces = [&](std::size_t question)
    {
        slow.write(slow.asked[question], observer->atom(X11Atom::incremental), 32, std::string(4, '\0'));
        slow.notify(slow.asked[question]);
        settle();
    };
    const auto piece = [&](std::size_t question, const std::string& bytes)
    {
        slow.write(slow.asked[question], slow.asked[question].target, 8, bytes);
        slow.server->sync();
        settle();
    };
    ASSERT_TRUE(asksFor(1));
    beginPieces(0);
    piece(0, "old ");
    ASSERT_TRUE(asksFor(2));
    beginPieces(1);
    piece(1, "new ");
    piece(0, "older ");
    piece(0, "");
    piece(1, "text");
    EXPECT_STREQ(field->getText(), "Gain");
    piece(1, "");
    EXPECT_TRUE(becomes("new text"));
    ASSERT_TRUE(asksFor(3) && asksFor(4));
    slow.write(slow.asked[2], slow.asked[2].target, 8, "third");
    slow.notify(slow.asked[2]);
    slow.write(slow.asked[3], slow.asked[3].target, 8, "!");
    slow.notify(slow.asked[3]);
    EXPECT_TRUE(becomes("new text!"));
}

TEST_F(X11TextEditTest, FollowsTheMouse)
{
    field->setText("one two");
    click(205, 50); // after the text
    expectAfter("key x", "one twox");
    user("mousemove 153 130 click --repeat 2 --delay 20 1"); // the first word
    expectAfter("key y", "y twox");
    user("mousemove 153 130 click --repeat 3 --delay 20 1");
    EXPECT_EQ(run("xclip -o -selection primary"), "y twox");
    user("mousemove 151 130 mousedown 1 mousemove 300 130 mouseup 1");
    expectAfter("key z", "z");
    EXPECT_FALSE(saw("view down 53,50 2")) << "the frame got a click on the field";
}

TEST_F(X11TextEditTest, EndsWithReturnOrEscape)
{
    user("key Escape");
    EXPECT_TRUE(until([this] { return callback.ended == "escape"; }));
    callback.onEnd = [this] { field.reset(); };
    user("key Return");
    EXPECT_TRUE(until([this] { return field == nullptr; }));
    EXPECT_EQ(callback.ended, "return");
    user("key k"); // the views have the keys again
    EXPECT_TRUE(until([this] { return saw("key k 0 0"); }));
}

TEST_F(X11TextEditTest, LiesWhereItIsToldAndShowsItsColours)
{
    EXPECT_TRUE(until([this] { return pixel(200, 50) == backColour; }));
    EXPECT_EQ(pixel(49, 50), 0xff0000u);
    EXPECT_EQ(pixel(211, 50), 0x0000ffu);
    callback.size = CRect(100.0, 100.0, 200.0, 124.0);
    callback.visible = CRect(150.0, 100.0, 200.0, 112.0); // the upper right part
    EXPECT_TRUE(field->updateSize());
    EXPECT_TRUE(until([this] { return pixel(190, 105) == backColour && pixel(140, 105) == 0xff0000; }));
    EXPECT_EQ(pixel(190, 115), 0x0000ffu);
    callback.visible = CRect(0.0, 0.0, 0.0, 0.0);
    EXPECT_TRUE(field->updateSize());
    EXPECT_TRUE(until([this] { return pixel(190, 105) == 0x0000ff; })) << "nothing of it is to be seen";
}

TEST_F(X11TextEditTest, OutlivesItsFrameWithoutHarm)
{
    user("key ctrl+a key ctrl+c key ctrl+v");
    closeFrame();
    EXPECT_STREQ(field->getText(), "Gain");
    EXPECT_FALSE(field->setText("later"));
    EXPECT_FALSE(field->updateSize());
    TovraKeyCode key;
    key.character = 'a';
    EXPECT_EQ(field->onKeyDown(key), kKeyNotHandled);
}

TEST_F(X11TextEditTest, TakesKeysThatTheFrameHandsOn)
{
    const struct
    {
        TovraKeyCode key;
        const char* expected;
    } keys[] = {{{0x20ac, 0, 0}, "\xe2\x82\xac"},
                {{0, kVirtualSpace, 0}, "\xe2\x82\xac "},
                {{0, kVirtualKeypad0 + 7, 0}, "\xe2\x82\xac 7"},
                {{0, kVirtualBackspace, 0}, "\xe2\x82\xac "}};
    for (const auto& key : keys)
    {
        TovraKeyCode code = key.key;
        EXPECT_EQ(field->onKeyDown(code), kKeyConsumed);
        EXPECT_STREQ(field->getText(), key.expected);
    }
}
