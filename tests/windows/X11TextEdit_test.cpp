#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/x11/X11TextEdit.h"
#include "windows/FieldOwner.h"
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

    xcb_window_t ownerOf(xcb_atom_t selection) const
    {
        xcb_connection_t* c = observer->xcb();
        const X11Reply<xcb_get_selection_owner_reply_t> reply{
            xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr)};
        return reply->owner;
    }

    FieldOwner callback;
    std::unique_ptr<IOSTextEdit> field;
};
}

TEST_F(X11TextEditTest, TakesWhatIsTyped)
{
    expectAfter("key a key shift+b", "aB"); // in place of all, which is selected
    expectAfter("key BackSpace key 1 key period key 5 key KP_7", "a1.57");
    expectAfter("key Home key Delete key minus", "-1.57");
    expectAfter("key End key shift+Left key shift+Left key adiaeresis", "-1.\xc3\xa4");
    expectAfter("key ctrl+a key x", "x");
    expectAfter("key F1 key ctrl+q key Up key y", "yx"); // F1 is the view's; control types nothing
    expectAfter("key End key space key z key ctrl+BackSpace", "yx ");
    EXPECT_FALSE(saw("key y 0 0")) << "a key of the field came to the views";
    EXPECT_TRUE(saw("key q 0 8")) << "what the field has no use for did not";
}

TEST_F(X11TextEditTest, CopiesCutsAndPastes)
{
    user("key ctrl+c");
    EXPECT_EQ(run("xclip -o -selection clipboard"), "Gain");
    EXPECT_EQ(run("xclip -o -selection clipboard -target TARGETS").find("TARGETS"), 0u);
    expectAfter("key ctrl+x", "");
    expectAfter("key ctrl+v key ctrl+v", "GainGain");
    expectAfter("key shift+Left key shift+Left key ctrl+x key Home key ctrl+v", "inGainGa");
}

TEST_F(X11TextEditTest, PastesFromOtherPrograms)
{
    const xcb_atom_t copied = observer->atom(X11Atom::clipboard);
    const xcb_window_t copiedFrom = ownerOf(copied);
    ChildProcess other;
    ASSERT_TRUE(other.start(
        {"sh", "-c", "printf 'a\\nb\\303\\244 100%%s\\n' | xclip -selection clipboard -quiet 2>&1"}, {}));
    EXPECT_TRUE(until([&] { return ownerOf(copied) != copiedFrom; }));
    expectAfter("key ctrl+a key ctrl+v", "a b\xc3\xa4 100%s");
    const xcb_window_t selectedIn = ownerOf(XCB_ATOM_PRIMARY);
    ChildProcess large;
    ASSERT_TRUE(large.start({"sh", "-c", "head -c 1000000 /dev/zero | tr '\\0' x | xclip -quiet 2>&1"}, {}));
    EXPECT_TRUE(until([&] { return ownerOf(XCB_ATOM_PRIMARY) != selectedIn; }));
    field->setText("");
    click(60, 50, 2); // the middle button, and a text that comes in pieces
    EXPECT_TRUE(becomes(std::string(255, 'x')));
}

TEST_F(X11TextEditTest, FollowsTheMouse)
{
    field->setText("one two");
    click(205, 50); // behind the text
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
        std::int64_t character;
        int virtualKey;
        const char* expected;
    } keys[] = {{'a', 0, "a"},
                {0x20ac, 0, "a\xe2\x82\xac"},
                {0, kVirtualSpace, "a\xe2\x82\xac "},
                {0, kVirtualKeypad0 + 7, "a\xe2\x82\xac 7"},
                {0, kVirtualBackspace, "a\xe2\x82\xac "}};
    for (const auto& key : keys)
    {
        TovraKeyCode code{key.character, std::uint8_t(key.virtualKey), 0};
        EXPECT_EQ(field->onKeyDown(code), kKeyConsumed);
        EXPECT_STREQ(field->getText(), key.expected);
    }
}
