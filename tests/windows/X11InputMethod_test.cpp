// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/window/IOSTextEdit.h"
#include "windows/FieldOwner.h"
#include "windows/MethodServer.h"
#include "windows/WindowTest.h"

#include <cstdlib>

using namespace Tovra;
using testing::ElementsAre;

// The library forgets the memory of each key that it sends, 80 bytes.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:xcb_xim_forward_event\n";
}

namespace
{
const std::string japan = "\xe6\x97\xa5\xe6\x9c\xac";

class X11InputMethodTest : public WindowTest
{
protected:
    X11InputMethodTest()
    {
        setenv("XMODIFIERS", "@im=lodex_test", 1);
        openFrame();
        takeKeyboard();
    }
    ~X11InputMethodTest() override
    {
        field.reset();
        closeFrame();
        unsetenv("XMODIFIERS");
    }

    void openField()
    {
        field.reset(window().createPlatformTextEdit(frame, &callback, view));
        field->setText("");
    }
    // With a method that has introduced itself.
    void openFieldFor(MethodServer& server)
    {
        openField();
        EXPECT_TRUE(until([&] { return server.contexts > 0; }));
        settle();
    }
    void expectAfter(const std::string& words, const std::string& expected)
    {
        user(words);
        EXPECT_TRUE(until([&] { return field->getText() == expected; }))
            << words << " left " << field->getText();
    }

    FieldOwner callback;
    std::unique_ptr<IOSTextEdit> field;
};
}

TEST_F(X11InputMethodTest, WritesIntoTheFieldInAnyScript)
{
    for (const std::uint32_t style : {XCB_IM_PreeditPosition, XCB_IM_PreeditNothing})
    {
        MethodServer server(style | XCB_IM_StatusNothing);
        openFieldFor(server);
        expectAfter("key a", japan);
        expectAfter("key b key x key shift+y key BackSpace key z", japan + "xz");
        EXPECT_THAT(std::vector<int>(server.keys.begin(), server.keys.begin() + 3), ElementsAre(38, 56, 53));
        if (style == XCB_IM_PreeditPosition)
        {
            EXPECT_TRUE(until([&] { return server.spot.x > 70; })) << "it does not follow the caret";
            EXPECT_EQ(server.spot.y, 60) << "it is not below the field";
        }
        field.reset();
        closeFrame();
        openFrame();
        takeKeyboard();
    }
    EXPECT_FALSE(saw("key x 0 0")) << "the views got a key of the field";
}

TEST_F(X11InputMethodTest, GetsTheKeysOfFieldsAlone)
{
    MethodServer server;
    openFieldFor(server);
    callback.onEnd = [this] { field.reset(); };
    user("key x key Return key a");
    EXPECT_TRUE(until([this] { return saw("up a 0 0"); }));
    EXPECT_TRUE(saw("key a 0 0"));
    EXPECT_EQ(callback.ended, "return");
    EXPECT_THAT(server.keys, ElementsAre(53, 36));
    openField();
    expectAfter("key a", japan);
}

// Whatever it does, the keys arrive once, and in the order of typing.
TEST_F(X11InputMethodTest, LosesNoKeyWhenItHangsOrDies)
{
    {
        MethodServer neverThere;
        neverThere.hang();
        openField();
        expectAfter("key x key a key y", "xay");
        closeFrame();
        field.reset();
    }
    openFrame();
    takeKeyboard();
    {
        MethodServer hangs;
        openFieldFor(hangs);
        hangs.hang();
        expectAfter("key x key a key b key y", "xaby");
        hangs.goOn();
        settle();
        expectAfter("key a", "xabya");
        field.reset();
    }
    {
        MethodServer dies;
        openFieldFor(dies);
        dies.diesOnB = true;
        expectAfter("key x key b key y key a", "xbya");
        field.reset();
    }
    MethodServer another;
    openFieldFor(another);
    another.hang();
    user("key x key y");
    closeFrame();
    another.goOn();
}
