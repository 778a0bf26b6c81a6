// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "windows/FieldOwner.h"
#include "windows/OtherProgram.h"
#include "windows/WindowTest.h"

#include <algorithm>
#include <cstring>
#include <xcb/xcb.h>

using namespace Tovra;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace
{
struct : X11EventSink
{
    void handleEvent(std::uint8_t, const xcb_generic_event_t&) override {}
} nobody;

// One colour all over.
class Ground : public CView
{
public:
    using CView::CView;

    void draw(CDrawContext* context) override
    {
        const auto byte = [this](int shift) { return static_cast<unsigned char>(color >> shift); };
        context->setFillColor({byte(16), byte(8), byte(0), 255});
        context->drawRect(getViewSize(), kFilled);
        setDirty(false);
    }

    std::uint32_t color = 0; // 0xRRGGBB
};

class X11FrameTest : public WindowTest
{
protected:
    X11FrameTest() { openFrame(); }

    // What the user's words bring, up to the entry that ends them.
    Log after(const std::string& words, const std::string& last)
    {
        log.clear();
        user(words);
        EXPECT_TRUE(until([&] { return saw(last); })) << words;
        return taken(log);
    }
    // What is seen of the frame, row by row: 0xRRGGBB.
    std::vector<std::uint32_t> screen()
    {
        xcb_connection_t* c = observer->xcb();
        const auto asked = xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, observer->screen().root, left, top,
                                         width, height, ~0u);
        const X11Reply<xcb_get_image_reply_t> image{xcb_get_image_reply(c, asked, nullptr)};
        std::vector<std::uint32_t> words(width * height);
        if (image != nullptr && size_t(xcb_get_image_data_length(image.get())) == words.size() * 4)
            std::memcpy(words.data(), xcb_get_image_data(image.get()), words.size() * 4);
        for (std::uint32_t& word : words)
            word &= 0xffffff;
        return words;
    }
    X11Place placeOnScreen()
    {
        xcb_connection_t* c = observer->xcb();
        const X11Reply<xcb_get_geometry_reply_t> reply{
            xcb_get_geometry_reply(c, xcb_get_geometry(c, window().windowId()), nullptr)};
        return reply ? X11Place{reply->x, reply->y, reply->width, reply->height} : X11Place{};
    }
};
}

TEST_F(X11FrameTest, ShowsItsPictureWhereverItIsUncovered)
{
    EXPECT_TRUE(until([this] { return pixel(10, 10) == 0xff0000 && pixel(290, 190) == 0x0000ff; }));
    EXPECT_EQ(pixel(149, 100), 0xff0000u);
    EXPECT_EQ(pixel(150, 100), 0x0000ffu);
    // Somebody else's window over a part of it, and away again.
    {
        X11Window cover(observer, nobody, X11Window::popUp, 0, {left + 100, top + 50, 100, 60});
        cover.show();
        EXPECT_TRUE(until([this] { return pixel(120, 70) == 0; }));
    }
    EXPECT_TRUE(until([this] { return pixel(120, 70) == 0xff0000 && pixel(180, 70) == 0x0000ff; }));
}

TEST_F(X11FrameTest, ShowsWhatWasDrawnAndNothingElse)
{
    constexpr std::uint32_t former = 0x102030, stain = 0x405060, drawn = 0x8090a0;
    idle.stop();
    const auto cover = new Ground({0, 0, width, height});
    frame->addView(cover);
    for (const double scale : {1.0, 1.5})
    {
        SCOPED_TRACE(scale);
        cover->color = former;
        frame->setScale(scale);
        frame->setDirty(true);
        frame->idle();
        ASSERT_TRUE(until([&] { return screen() == std::vector<std::uint32_t>(width * height, former); }));

        // What nobody has drawn is in the picture, but must not be seen.
        IOSBitmap& picture = *frame->getFrameBitmap();
        picture.beginDrawing();
        auto* const pixels = reinterpret_cast<std::uint32_t*>(picture.getPixelPtr());
        std::fill_n(pixels, picture.getWidth() * picture.getHeight(), stain);
        cover->color = drawn;
        for (const CRect& part : {CRect(20, 30, 41, 52), CRect(90.5, 40.25, 120, 70), CRect(-5, 110, 7, 119)})
            frame->addDirtyRect(part);
        frame->idle();
        std::vector<std::uint32_t> expected;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                expected.push_back(
                    (pixels[unsigned(y) * picture.getWidth() + unsigned(x)] & 0xffffff) == stain ? former
                                                                                                 : drawn);
        EXPECT_GT(std::count(expected.begin(), expected.end(), drawn), 1000);
        EXPECT_TRUE(until([&] { return screen() == expected; }));
    }
}

TEST_F(X11FrameTest, DrawsOnIntoItsPictureWhenTheServerIsLost)
{
    idle.stop();
    xcb_kill_client(observer->xcb(), window().windowId());
    observer->flush();
    EXPECT_TRUE(until([this] { return !window().isOpen(); }));
    for (const double scale : {1.0, 2.0}) // and in new memory
    {
        frame->setScale(scale);
        frame->setDirty(true);
        frame->idle();
        const IOSBitmap& picture = *frame->getFrameBitmap();
        EXPECT_EQ(picture.getWidth(), unsigned(width * scale));
        const unsigned char* const pixel = frame->getFrameBitmap()->getPixelPtr();
        EXPECT_EQ(std::vector<int>(pixel, pixel + 3), std::vector<int>({0, 0, 255}));
    }
}

TEST_F(X11FrameTest, HandsOnWhatTheMouseDoes)
{
    moveTo(20, 30);
    EXPECT_TRUE(until([this] { return saw("view move 20,30 0"); }));
    const struct
    {
        const char* words;
        std::vector<std::string> seen;
    } cases[] = {
        {"click --repeat 2 --delay 20 3", {"view down 20,30 8", "view down 20,30 1032", "view up 20,30 8"}},
        {"click 8", {"view down 20,30 4", "view up 20,30 4"}},
        {"click 4 click 7", {"view axisY", "view wheel 20,30 1", "view axisX", "view wheel 20,30 -1"}},
        {"keydown alt click 3 keyup alt", {"view down 20,30 72", "view up 20,30 72"}},
        {"keydown ctrl click 1 keyup ctrl", {"view down 20,30 4"}},
        {"keydown super click 1 keyup super", {"view down 20,30 8"}},
        {"mousemove 150 130 mousedown 1 mousemove 155 135 mouseup 1",
         {"view down 50,50 2", "view move 55,55 2", "view up 55,55 2"}},
        {"mousedown 9 mousemove 156 135 mouseup 9", {"view move 56,55 256", "view up 56,55 256"}},
        {"mousemove 800 500", {"view exit 700,420 0"}},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.words);
        EXPECT_THAT(after(one.words, one.seen.back()), testing::IsSupersetOf(one.seen));
        EXPECT_FALSE(saw("view up 20,30 1032")) << "a release is no double click";
    }
}

// Something hides the window under the mouse, in the middle of a drag or without one.
TEST_F(X11FrameTest, LetsGoWhenTheMouseIsLost)
{
    const std::function<void()> ends[] = {
        [this] { host->command("hide"); },
        [this] { xcb_unmap_window(observer->xcb(), window().windowId()); },
        [this] { host->command("destroy"); },
    };
    int x = 0;
    for (const auto& end : ends)
        for (const bool isDragged : {false, true})
        {
            x += 10;
            const std::string at = std::to_string(x) + ",20 ";
            log.clear();
            moveTo(x, 20);
            if (isDragged)
                user("mousedown 1");
            EXPECT_TRUE(
                until([&] { return saw("view " + (isDragged ? "down " + at + "2" : "move " + at + "0")); }));
            if (!isDragged && &end == std::end(ends) - 1)
                continue; // it can be destroyed once
            end();
            observer->flush();
            EXPECT_TRUE(until([&] { return saw("view exit " + at + "0"); }));
            EXPECT_EQ(saw("view up " + at + "2"), isDragged);
            user("mouseup 1");
            host->command("show");
            xcb_map_window(observer->xcb(), window().windowId());
            settle();
            EXPECT_EQ(std::count(log.begin(), log.end(), "view up " + at + "2"), isDragged ? 1 : 0);
        }
}

TEST_F(X11FrameTest, LetsGoWhenItIsClosedOrTheServerIsLost)
{
    for (const bool isClosed : {false, true})
    {
        if (isClosed)
            openFrame();
        user("mousemove 150 130 mousedown 1");
        EXPECT_TRUE(until([this] { return saw("view down 50,50 2"); }));
        log.clear();
        if (isClosed)
            closeFrame();
        else
            xcb_kill_client(observer->xcb(), window().windowId());
        observer->flush();
        EXPECT_TRUE(until([this] { return saw("view up 50,50 2"); }));
        user("mouseup 1");
        closeFrame();
    }
}

TEST_F(X11FrameTest, TellsWhereTheMouseIsAndWhatItHolds)
{
    moveTo(40, 50);
    user("mousedown 3 keydown shift");
    CPoint where;
    long held = 0;
    EXPECT_TRUE(window().getCurrentMousePosition(where));
    EXPECT_EQ(where, CPoint(40.0, 50.0));
    EXPECT_TRUE(window().getCurrentMouseButtons(held));
    EXPECT_EQ(held, kButtonRight | kModShift);
    user("mouseup 3 keyup shift");
    EXPECT_TRUE(window().getGlobalPosition(where));
    EXPECT_EQ(where, CPoint(left, top));
}

TEST_F(X11FrameTest, TypesOnceItWasClicked)
{
    setLayout("de"); // which has all of these keys
    takeKeyboard();
    const struct
    {
        const char* key;
        std::string down;
    } cases[] = {
        {"a", "key a 0 0"},     {"shift+b", "key B 0 1"},      {"Tab", "key 0 2 0"},
        {"space", "key 0 7 0"}, {"adiaeresis", "key 228 0 0"}, {"ctrl+c", "key c 0 4"},
        {"alt+x", "key x 0 2"}, {"super+q", "key q 0 8"},      {"EuroSign", "key 8364 0 0"},
    };
    for (const auto& one : cases)
        EXPECT_THAT(after(std::string("key ") + one.key, one.down), Contains(one.down));
    EXPECT_THAT(after("key w", "up w 0 0"), ElementsAre("key w 0 0", "up w 0 0"));
}

TEST_F(X11FrameTest, PutsDeadKeysAndLettersTogether)
{
    takeKeyboard();
    setLayout("us -variant intl");
    EXPECT_THAT(after("key dead_acute key e", "key 233 0 0"), Not(Contains("key e 0 0")));
    EXPECT_THAT(after("key dead_diaeresis key u", "key 252 0 0"), Not(Contains("key u 0 0")));
}

TEST_F(X11FrameTest, LeavesKeysThatNobodyWantsToTheHostPressAndReleaseAlike)
{
    takeKeyboard();
    view->keyAnswer = kKeyNotHandled;
    view->keyUpAnswer = kKeyConsumed;
    user("key b");
    EXPECT_TRUE(until([this] { return saw("up b 0 0"); }));
    view->keyAnswer = kKeyConsumed;
    view->keyUpAnswer = kKeyNotHandled;
    user("key a");
    EXPECT_TRUE(until([this] { return saw("up a 0 0") && host->lines.size() >= 2; }));
    view->keyAnswer = kKeyNotHandled;
    user("key c");
    EXPECT_TRUE(until([this] { return host->lines.size() >= 4; }));
    EXPECT_THAT(host->lines, ElementsAre("press 56", "release 56", "press 54", "release 54"));
}

TEST_F(X11FrameTest, SpeaksXEmbedWithAHostThatDoes)
{
    const std::string me = std::to_string(window().windowId());
    host->command("embed " + me);
    EXPECT_TRUE(until([this] { return host->count("done") == 1; }));
    click(10, 10);
    EXPECT_TRUE(until([this] { return host->count("xembed 3") == 1; })) << "asks for the focus";
    view->keyAnswer = kKeyNotHandled;
    host->command("key " + me + " 23"); // Tab
    EXPECT_TRUE(until([this] { return host->count("xembed 6") == 1; })) << "next";
    host->command("key " + me + " 38"); // a
    EXPECT_TRUE(until([this] { return saw("key a 0 0"); }));
    settle();
    EXPECT_EQ(host->count("press 38"), 0u) << "a key that the host sent does not go back to it";
}

TEST_F(X11FrameTest, TakesTheSizeThatIsAskedFor)
{
    for (const auto& [asked, expected] :
         {std::pair(CRect(5.0, 5.0, 105.0, 65.0), CRect(0.0, 0.0, 100.0, 60.0)),
          {CRect(0.0, 0.0, 1.0e9, std::nan("")), CRect(0.0, 0.0, 32767.0, 1.0)}})
    {
        EXPECT_TRUE(window().setSize(asked));
        CRect size;
        settle();
        EXPECT_TRUE(window().getSize(size));
        EXPECT_EQ(size, expected);
        EXPECT_EQ(placeOnScreen(), X11Window::bounded(0.0, 0.0, expected.right, expected.bottom));
    }
}

// The picture and the window grow and shrink; places of events stay in units.
TEST_F(X11FrameTest, MovesBetweenScalesWhileItIsOpen)
{
    frame->setViewSize({0, 0, 80, 60});
    view->setViewSize({0, 0, 80, 60});
    for (const double scale : {1.5, 3.0, 1.25, 1.0})
    {
        SCOPED_TRACE(scale);
        frame->setScale(scale);
        const int across = int(std::ceil(80 * scale)), down = int(std::ceil(60 * scale));
        EXPECT_TRUE(until([&] { return placeOnScreen().width == across && placeOnScreen().height == down; }));
        EXPECT_TRUE(until(
            [&] { return pixel(across / 2 - 1, down - 1) == 0xff0000 && pixel(across / 2, 0) == 0x0000ff; }));
        log.clear();
        moveTo(int(40 * scale), int(20 * scale)); // whole pixels at each of them
        user("click 1");
        EXPECT_TRUE(until([this] { return saw("view down 40,20 2") && saw("view up 40,20 2"); }));
    }
}

TEST_F(X11FrameTest, ChangesItsCursor)
{
    for (const int type : {0, 2, 3, 4, 8, 9, 77})
        EXPECT_TRUE(window().setMouseCursor(CCursorType(type)));
    for (const int type : {2, 3, 4, 8, 9})
        EXPECT_NE(window().sharedConnection()->cursor(type), window().sharedConnection()->cursor(0)) << type;
}

TEST_F(X11FrameTest, SurvivesItsParent)
{
    host->command("destroy");
    EXPECT_TRUE(until([this] { return !window().isOpen(); }));
    CRect size;
    CPoint point;
    long held = 0;
    EXPECT_FALSE(window().getSize(size));
    EXPECT_FALSE(window().setSize(CRect(0.0, 0.0, 10.0, 10.0)));
    EXPECT_FALSE(window().getGlobalPosition(point));
    EXPECT_FALSE(window().getCurrentMouseButtons(held));
    EXPECT_FALSE(window().setMouseCursor(kCursorHand));
    EXPECT_EQ(window().createPlatformTextEdit(frame, nullptr, view), nullptr);
    view->setDirty(true);
    frame->idle();
}

TEST_F(X11FrameTest, SurvivesTheServerCuttingItOff)
{
    FieldOwner callback;
    const std::unique_ptr<IOSTextEdit> field(window().createPlatformTextEdit(frame, &callback, view));
    xcb_kill_client(observer->xcb(), window().windowId());
    observer->flush();
    EXPECT_TRUE(until([this] { return !window().isOpen(); }));
    EXPECT_FALSE(field->updateSize());
    view->setDirty(true);
    frame->idle();
    CPoint point;
    EXPECT_FALSE(window().getCurrentMousePosition(point));
    idle.stop();
    bool isQuiet = false; // a dead connection that is still watched can always be read
    for (int i = 0; i < 1000 && !isQuiet; ++i)
        isQuiet = !loop.runOnce(0);
    EXPECT_TRUE(isQuiet);
}

TEST_F(X11FrameTest, BelievesTheServerAloneThatItsWindowIsGone)
{
    xcb_destroy_notify_event_t destroyed{};
    destroyed.response_type = XCB_DESTROY_NOTIFY;
    destroyed.event = destroyed.window = window().windowId();
    xcb_configure_notify_event_t configured{};
    configured.response_type = XCB_CONFIGURE_NOTIFY;
    configured.event = configured.window = window().windowId();
    configured.width = configured.height = 7;
    OtherProgram liar;
    liar.send(window().windowId(), destroyed);
    liar.send(window().windowId(), configured);
    liar.server->sync();
    settle();
    CRect size;
    EXPECT_TRUE(window().getSize(size));
    EXPECT_EQ(size, CRect(0.0, 0.0, width, height));
    click(10, 10);
    EXPECT_TRUE(until([this] { return saw("view up 10,10 2"); }));
}

TEST_F(X11FrameTest, MayBeClosedByItsOwnClick)
{
    view->reaction = [this](const std::string& word)
    {
        if (word == "down")
            closeFrame();
    };
    click(10, 10);
    EXPECT_TRUE(until([this] { return frame == nullptr; }));
}

TEST_F(X11FrameTest, IsMadeForAWindowOfThisServerAlone)
{
    const CRect size(0.0, 0.0, 10.0, 10.0);
    EXPECT_EQ(X11Frame::create(frame, size, nullptr), nullptr);
    EXPECT_EQ(X11Frame::create(frame, size, reinterpret_cast<void*>(0x7fffffff)), nullptr);
    EXPECT_EQ(X11Frame::create(frame, size, reinterpret_cast<void*>(~std::uintptr_t(0))), nullptr);
}

TEST_F(X11FrameTest, IsFittedWhenItsPlaceIsOfAnotherSize)
{
    const std::uint32_t pixels[] = {0xff0000, 0x00ff00, 0x0000ff, 0xffffff};
    const BlitPicture picture{reinterpret_cast<const unsigned char*>(pixels), 2, 2, 8, false};
    idle.stop();
    for (const auto transport : {X11Picture::sharedIfPossible, X11Picture::sent})
    {
        X11Surface surface(window().sharedConnection(), transport);
        X11Window over(window().sharedConnection(), nobody, X11Window::child, window().windowId(),
                       {0, 0, 300, 200});
        over.show();
        surface.show(over, picture, {10, 20, 280, 160});
        EXPECT_EQ(surface.isShared(), transport == X11Picture::sharedIfPossible);
        EXPECT_TRUE(until([&] { return pixel(11, 21) == 0xff0000; }));
        EXPECT_EQ(pixel(288, 21), 0x00ff00u);
        EXPECT_EQ(pixel(11, 178), 0x0000ffu);
        EXPECT_EQ(pixel(288, 178), 0xffffffu);
        EXPECT_EQ(pixel(5, 5), 0u) << "around it";
    }
}

// Another program, such as the desktop's settings, writes the resources while the window is open.
TEST_F(X11FrameTest, FollowsTheDesktopsScaleAndSubpixels)
{
    int told = 0;
    frame->onDesktopScale = [&] { ++told; };
    const auto write = [this](const std::string& text)
    {
        xcb_change_property(observer->xcb(), XCB_PROP_MODE_REPLACE, observer->screen().root,
                            XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8, std::uint32_t(text.size()),
                            text.data());
        observer->flush();
    };
    EXPECT_EQ(window().getDesktopScale(), 1.0);
    write("Xft.dpi:\t192\nXft.rgba:\tbgr\n");
    EXPECT_TRUE(until([&] { return told == 1; }));
    EXPECT_EQ(window().getDesktopScale(), 2.0);
    EXPECT_EQ(frame->getRenderer()->subpixelOrder(), kSubpixelBGR);
    frame->onDesktopScale = [this] { closeFrame(); };
    write("");
    EXPECT_TRUE(until([this] { return frame == nullptr; }));
    openFrame();
    EXPECT_EQ(window().getDesktopScale(), 1.0);
}
