// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/RecordingView.h"
#include "Tovrane/window/CDragContainer.h"
#include "Tovrane/window/TovraKeyCode.h"

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class CFrameKeys : public HeadlessTest
{
protected:
    long press(int virtualKey, int modifiers = 0)
    {
        TovraKeyCode code;
        code.virtualKey = std::uint8_t(virtualKey);
        code.modifiers = std::uint8_t(modifiers);
        return frame->onKeyDown(code);
    }
    long release()
    {
        TovraKeyCode code;
        return frame->onKeyUp(code);
    }
    CView* focus() { return frame->getFocusView(); }
};

using CFrameFocus = CFrameKeys;
using CFrameDrag = CFrameKeys;
}

TEST_F(CFrameKeys, GoToTheFocusThenTheModalViewThenAllFromAbove)
{
    RecordingView* const below = add("below", {0, 0, 9, 9});
    RecordingView* const focused = add("focused", {0, 0, 9, 9});
    auto* const modal = new RecordingView(log, "modal", CRect(0, 0, 9, 9));
    frame->setModalView(modal);
    frame->setFocusView(focused);

    EXPECT_EQ(press(kVirtualLeft), kKeyNotHandled);
    EXPECT_THAT(taken(log), ElementsAre("focused key", "modal key", "modal key", "focused key", "below key"));
    below->answers["key"] = 5;
    EXPECT_EQ(press(kVirtualLeft), 5);
    modal->answers["key"] = 0; // any answer but -1 ends the search
    log.clear();
    EXPECT_EQ(press(kVirtualLeft), 0);
    EXPECT_THAT(taken(log), ElementsAre("focused key", "modal key"));

    below->answers["keyUp"] = kKeyConsumed;
    EXPECT_EQ(release(), kKeyNotHandled);
    EXPECT_THAT(taken(log), ElementsAre("focused keyUp", "modal keyUp"));

    // A view may close everything with a key.
    focused->reaction = [&](const std::string&) { frame->close(); };
    EXPECT_EQ(press(kVirtualLeft), kKeyNotHandled);
    modal->forget();
}

TEST_F(CFrameFocus, TabGoesRoundTheTreeAndOutAtItsEnds)
{
    EXPECT_EQ(press(kVirtualTab), kKeyNotHandled) << "nobody wants it";

    RecordingView* const first = add("first", {0, 0, 9, 9});
    RecordingContainer* const box = addContainer("box", {0, 0, 99, 99});
    RecordingView* const inner = add("inner", {0, 0, 9, 9}, box);
    add("idle", {0, 0, 9, 9}, box);
    RecordingView* const second = add("second", {0, 0, 9, 9}, box);
    RecordingView* const last = add("last", {0, 0, 9, 9});
    for (CView* view : {first, inner, second, last})
        view->setWantsFocus(true);

    for (CView* next : {first, inner, second, last})
    {
        EXPECT_EQ(press(kVirtualTab), kKeyConsumed);
        EXPECT_EQ(focus(), next);
    }
    EXPECT_EQ(press(kVirtualTab), kKeyNotHandled);
    EXPECT_EQ(focus(), nullptr);
    for (CView* next : {last, second, inner, first})
    {
        EXPECT_EQ(press(kVirtualTab, kKeyShift), kKeyConsumed);
        EXPECT_EQ(focus(), next);
    }
    EXPECT_EQ(press(kVirtualTab, kKeyShift), kKeyNotHandled);

    // A container that wants the focus itself comes before its children.
    box->setWantsFocus(true);
    frame->setFocusView(first);
    press(kVirtualTab);
    EXPECT_EQ(focus(), box);
    press(kVirtualTab);
    EXPECT_EQ(focus(), last);
}

TEST_F(CFrameFocus, TabStaysWithinAModalView)
{
    RecordingView* const outside = add("outside", {0, 0, 9, 9});
    outside->setWantsFocus(true);

    auto* const plain = new RecordingView(log, "plain", CRect(0, 0, 9, 9));
    frame->setModalView(plain);
    EXPECT_EQ(press(kVirtualTab), kKeyConsumed);
    EXPECT_EQ(focus(), plain); // though it does not want it
    EXPECT_EQ(press(kVirtualTab), kKeyNotHandled);
    frame->setModalView(nullptr);
    EXPECT_EQ(focus(), nullptr);
    plain->forget();

    auto* const box = new RecordingContainer(log, "box", CRect(0, 0, 9, 9));
    RecordingView* const inner = add("inner", {0, 0, 9, 9}, box);
    inner->setWantsFocus(true);
    frame->setModalView(box);
    EXPECT_EQ(press(kVirtualTab), kKeyConsumed);
    EXPECT_EQ(focus(), inner);
    EXPECT_EQ(press(kVirtualTab), kKeyNotHandled);
    EXPECT_EQ(focus(), inner);
    frame->setModalView(nullptr);
    box->forget();
}

TEST_F(CFrameFocus, ChangesOnceAndRedrawsThoseThatWantIt)
{
    RecordingView* const a = add("a", {0, 0, 10, 10});
    RecordingView* const b = add("b", {20, 0, 30, 10});
    RecordingView* const c = add("c", {40, 0, 50, 10});
    a->setWantsFocus(true);
    b->setWantsFocus(true);
    settle();

    frame->setFocusView(a);
    EXPECT_EQ(frame->getDirtyRects().size(), 1);
    a->reaction = [&](const std::string&) { frame->setFocusView(c); }; // is ignored
    frame->setFocusView(b);
    EXPECT_EQ(focus(), b);
    EXPECT_EQ(frame->getDirtyRects().size(), 2);
    frame->setFocusView(b);
    EXPECT_THAT(taken(log), ElementsAre("a loose"));

    frame->removeView(b, false);
    EXPECT_EQ(focus(), nullptr);
    EXPECT_THAT(taken(log), IsEmpty()) << "a view that has gone is told nothing";
    b->forget();
}

// Also when the focus is deep in the tree, and when the view that loses it changes something.
TEST_F(CFrameFocus, AClickElsewhereDropsIt)
{
    RecordingContainer* const box = addContainer("box", {50, 50, 90, 90});
    RecordingView* const deep = add("deep", {10, 10, 20, 20}, box);
    RecordingView* const other = add("other", {0, 0, 40, 40});
    const auto click = [&](CPoint where)
    {
        CPoint point = where;
        frame->onMouseDown(point, kButtonLeft);
        return taken(log);
    };
    frame->setFocusView(deep);
    EXPECT_THAT(click({60, 60}), ElementsAre("box down 60,60 2", "deep down 10,10 2"));
    EXPECT_EQ(focus(), deep);
    EXPECT_THAT(click({71, 60}), ElementsAre("deep loose", "box down 71,60 2"));
    EXPECT_EQ(focus(), nullptr);

    // A press from within looseFocus captures a view that the present click was not meant for.
    frame->setFocusView(deep);
    deep->reaction = [&](const std::string&)
    {
        other->answers["down"] = kMouseHandled;
        CPoint point(5, 5);
        frame->onMouseDown(point, kButtonRight);
    };
    EXPECT_THAT(click({95, 95}), ElementsAre("deep loose", "other down 5,5 8", "other exit 95,95 2"));
    CPoint point(5, 5);
    EXPECT_EQ(frame->onMouseUp(point, kButtonLeft), kMouseUnhandled);
}

TEST_F(CFrameDrag, FollowsTheViewUnderIt)
{
    RecordingContainer* const box = addContainer("box", {50, 50, 90, 90});
    RecordingView* const inner = add("inner", {10, 10, 20, 20}, box);
    add("other", {0, 0, 40, 40});
    inner->answers["drop"] = true;
    const auto drag = Kept<CDropContent>::adopt(new CDropContent("text", {}));

    frame->onDragEnter(drag.get(), {45, 5});
    EXPECT_THAT(taken(log), IsEmpty());
    frame->onDragMove(drag.get(), {5, 5});
    frame->onDragMove(drag.get(), {6, 5});
    EXPECT_THAT(taken(log), ElementsAre("other dragEnter 5,5", "other dragMove 6,5"));
    frame->onDragMove(drag.get(), {61, 62});
    EXPECT_THAT(taken(log),
                ElementsAre("other dragLeave 61,62", "box dragEnter 61,62", "inner dragEnter 11,12"));
    EXPECT_TRUE(frame->onDrop(drag.get(), {62, 62}));
    EXPECT_THAT(taken(log), ElementsAre("box dragMove 62,62", "inner dragMove 12,12", "box drop 62,62",
                                        "inner dragMove 12,12", "inner drop 12,12"));
    EXPECT_FALSE(frame->onDrop(drag.get(), {45, 5}));
    frame->onDragEnter(drag.get(), {5, 5});
    frame->onDragLeave(drag.get(), {5, 5});
    frame->onDragLeave(drag.get(), {5, 5});
    EXPECT_THAT(taken(log), ElementsAre("other dragEnter 5,5", "other dragLeave 5,5"));
}

TEST_F(CFrameDrag, TargetsMayGoInTheMidstOfIt)
{
    const auto drag = Kept<CDropContent>::adopt(new CDropContent("", {"/no/such/file"}));
    for (const char* word : {"dragEnter", "dragMove", "dragLeave", "drop"})
    {
        SCOPED_TRACE(word);
        RecordingContainer* const box = addContainer("box", {0, 0, 90, 90});
        RecordingView* const view = add("view", {0, 0, 50, 50}, box);
        bool happened = false;
        view->reaction = [&, in = std::string(word)](const std::string& what)
        {
            if (what != in || std::exchange(happened, true))
                return;
            frame->removeAll();
        };
        frame->onDragEnter(drag.get(), {5, 5});
        frame->onDragMove(drag.get(), {6, 6});
        frame->onDragMove(drag.get(), {70, 70});
        frame->onDragMove(drag.get(), {6, 6});
        EXPECT_FALSE(frame->onDrop(drag.get(), {6, 6}));
        EXPECT_TRUE(happened);
        EXPECT_EQ(frame->getNbViews(), 0);
    }
}
