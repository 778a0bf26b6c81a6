// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/RecordingView.h"
#include "Tovrane/window/MouseEvents.h"

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// "down", "up", "move" or "wheel" (one notch up) at a point.
struct MouseStep
{
    const char* event;
    CPoint where;
    long buttons = kButtonLeft;
};

class CFrameMouse : public HeadlessTest
{
protected:
    MouseEventResult send(const MouseStep& step)
    {
        CPoint where = step.where;
        const std::string event = step.event;
        if (event == "down")
            return frame->onMouseDown(where, step.buttons);
        if (event == "up")
            return frame->onMouseUp(where, step.buttons);
        if (event == "move")
            return frame->onMouseMoved(where, step.buttons);
        return frame->onWheel(where, kMouseWheelAxisY, 1.0f, step.buttons) ? kMouseHandled : kMouseUnhandled;
    }

    // All that the views receive.
    Log after(const std::vector<MouseStep>& steps)
    {
        log.clear();
        for (const MouseStep& step : steps)
            send(step);
        return taken(log);
    }
};

class ModifierListener : public CControlListener
{
public:
    long controlModifierClicked(CControl*, long buttons) override
    {
        clicked.push_back(buttons);
        return answer;
    }
    long answer = 0;
    std::vector<long> clicked;
};
}

TEST_F(CFrameMouse, APressGoesFromAboveToTheFirstThatTakesIt)
{
    RecordingView* const below = add("below", {0, 0, 50, 50});
    RecordingContainer* const box = addContainer("box", {10, 20, 60, 60});
    RecordingView* const inner = add("inner", {5, 5, 20, 20}, box);
    below->answers["down"] = kMouseHandled;

    EXPECT_THAT(after({{"down", {20, 30}}, {"move", {90, 90}}, {"up", {22, 33}}}),
                ElementsAre("box down 20,30 2", "inner down 10,10 2", "below down 20,30 2",
                            "below move 90,90 2", "below up 22,33 2"));

    inner->answers["down"] = kMouseHandled;
    EXPECT_THAT(after({{"down", {20, 30}}, {"up", {20, 30}}}),
                ElementsAre("box down 20,30 2", "inner down 10,10 2", "box up 20,30 2", "inner up 10,10 2"));

    inner->answers["down"] = kMouseHandledNoMoves;
    EXPECT_THAT(after({{"down", {20, 30}}, {"up", {20, 30}}}),
                ElementsAre("box down 20,30 2", "inner down 10,10 2"));
}

TEST_F(CFrameMouse, PassesOverWhatIsHiddenDisabledMouselessOrElsewhere)
{
    const std::vector<std::pair<const char*, std::function<void(CView&)>>> obstacles = {
        {"hidden", [](CView& v) { v.setVisible(false); }},
        {"disabled", [](CView& v) { v.setEnabled(false); }},
        {"mouseless", [](CView& v) { v.setMouseEnabled(false); }},
        {"another area",
         [](CView& v) {
             v.setMouseableArea({100, 0, 110, 10});
         }},
        {"outside its parent",
         [](CView& v) {
             v.setViewSize({-90, 0, -50, 50});
         }},
    };
    for (const auto& [name, obstruct] : obstacles)
    {
        SCOPED_TRACE(name);
        RecordingView* const view = add("view", {0, 0, 50, 50});
        view->answers["wheel"] = true;
        EXPECT_THAT(after({{"wheel", {50, 50}}}), ElementsAre("view axisY", "view wheel 50,50 1"));
        obstruct(*view);
        EXPECT_THAT(after({{"down", {50, 50}}, {"wheel", {50, 50}}}), IsEmpty());
        frame->removeView(view);
    }
}

TEST_F(CFrameMouse, TurnsLeftClicksWithControlOrCommandIntoOtherButtons)
{
    add("view", {0, 0, 50, 50})->answers["down"] = kMouseHandledNoMoves;
    const struct
    {
        long pressed, received;
    } cases[] = {
        {kButtonLeft, kButtonLeft},
        {kButtonLeft | kModShift | kModAlt, kButtonLeft | kModShift | kModAlt},
        {kButtonLeft | kModControl | kModShift | kDoubleClick, kButtonRight},
        {kButtonLeft | kModCommand | kModShift, kButtonMiddle},
        {kButtonLeft | kModControl | kModCommand, kButtonRight},
        {kButtonRight | kModControl, kButtonRight | kModControl},
    };
    for (const auto& c : cases)
    {
        EXPECT_THAT(after({{"down", {1, 2}, c.pressed}}),
                    ElementsAre("view down 1,2 " + std::to_string(c.received)));
        EXPECT_EQ(frame->getCurrentMouseButtons(), c.received);
        EXPECT_EQ(frame->getLastMousePosition(), CPoint(1, 2));
    }
}

TEST_F(CFrameMouse, AListenerMayTakeClicksWithModifiersFromItsControl)
{
    ModifierListener listener;
    RecordingControl* const control =
        place(new RecordingControl(log, "control", CRect(0, 0, 50, 50), &listener));
    const struct
    {
        long pressed, answer;
        bool heard, reached;
    } cases[] = {
        {kButtonLeft, 1, false, true},
        {kButtonLeft | kModShift, 1, true, false},
        {kButtonLeft | kModShift, 0, true, true},
        {kButtonLeft | kModControl, 1, false, true}, // has become a right click without modifiers
        {kButtonRight | kModControl, 1, true, false},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(testing::Message() << c.pressed << ", answer " << c.answer);
        listener.clicked.clear();
        listener.answer = c.answer;
        const Log received = after({{"down", {5, 5}, c.pressed}, {"up", {5, 5}, c.pressed}});
        EXPECT_EQ(listener.clicked.size(), c.heard ? 1u : 0u);
        EXPECT_EQ(!received.empty(), c.reached);
    }
    control->setListener(nullptr);
    EXPECT_EQ(after({{"down", {5, 5}, kButtonLeft | kModShift}}).size(), 1u);
}

TEST_F(CFrameMouse, TracksTheViewUnderTheMouse)
{
    RecordingContainer* const box = addContainer("box", {10, 10, 60, 60});
    add("left", {0, 0, 20, 50}, box);
    add("right", {20, 0, 50, 50}, box);
    EXPECT_THAT(after({{"move", {15, 15}, 0}}),
                ElementsAre("box move 15,15 0", "left move 5,5 0", "left enter 5,5 0", "box enter 15,15 0"));
    EXPECT_THAT(after({{"move", {40, 15}, 0}}), ElementsAre("box move 40,15 0", "right move 30,5 0",
                                                            "left exit 30,5 0", "right enter 30,5 0"));
    EXPECT_THAT(after({{"move", {70, 15}, 0}}), ElementsAre("box exit 70,15 0", "right exit 60,5 0"));
}

TEST_F(CFrameMouse, ACapturedViewMayLetMovesThrough)
{
    add("below", {0, 0, 50, 50})->answers["move"] = kMouseHandled;
    RecordingView* const top = add("top", {0, 0, 10, 10});
    top->answers["down"] = kMouseHandled;
    after({{"down", {5, 5}}});
    EXPECT_THAT(after({{"move", {6, 6}}}),
                ElementsAre("top move 6,6 2", "top move 6,6 2", "below move 6,6 2", "top enter 6,6 2"));
    top->answers["move"] = kMouseHandled;
    EXPECT_THAT(after({{"move", {40, 40}}}),
                ElementsAre("top move 40,40 2", "top exit 40,40 2", "below enter 40,40 2"));
}

TEST_F(CFrameMouse, LeavingTheWindowEndsWhatWasUnderTheMouse)
{
    RecordingContainer* const box = addContainer("box", {10, 10, 60, 60});
    RecordingView* const view = add("view", {0, 0, 50, 50}, box);
    const auto leave = [this](long buttons)
    {
        frame->setCursor(kCursorHand);
        CPoint where(250, 15);
        EXPECT_EQ(frame->onMouseExited(where, buttons), kMouseHandled);
        return taken(log);
    };
    after({{"move", {15, 15}, 0}});
    EXPECT_THAT(leave(0), ElementsAre("box exit 250,15 0", "view exit 240,5 0"));
    EXPECT_EQ(window().cursor(), kCursorDefault);
    EXPECT_EQ(frame->getLastMousePosition(), CPoint(250, 15));
    EXPECT_THAT(leave(0), IsEmpty()) << "no view is below the pointer any more";

    view->answers["down"] = kMouseHandled;
    after({{"down", {15, 15}}, {"move", {16, 15}}});
    EXPECT_THAT(leave(kButtonLeft), ElementsAre("box exit 250,15 2", "view exit 240,5 2"));
    EXPECT_EQ(window().cursor(), kCursorHand) << "the drag goes on outside";
    after({{"up", {250, 15}}});

    auto* const modal = new RecordingView(log, "modal", CRect(0, 0, 50, 50));
    frame->setModalView(modal);
    EXPECT_THAT(leave(0), ElementsAre("modal exit 250,15 0"));
    frame->setModalView(nullptr);
    modal->forget();
}

// The exit has the frame's coordinates, unlike the release.
TEST_F(CFrameMouse, AReleaseOutsideExitsTheCapturedViewFirst)
{
    RecordingContainer* const box = addContainer("box", {10, 10, 60, 60});
    add("view", {0, 0, 20, 20}, box)->answers["down"] = kMouseHandled;
    EXPECT_THAT(after({{"down", {15, 15}}, {"up", {60, 15}}}),
                ElementsAre("box down 15,15 2", "view down 5,5 2", "box exit 60,15 2", "box up 60,15 2",
                            "view up 50,5 2"));
    EXPECT_EQ(send({"up", {60, 15}}), kMouseUnhandled); // no view is captured any more

    // A press releases the view that an unfinished one has captured.
    send({"down", {15, 15}});
    send({"down", {150, 90}});
    EXPECT_EQ(send({"up", {15, 15}}), kMouseUnhandled);
}

// Containers in the frame, but not the frame itself, ask isWheelActive, and without an axis they take Y.
TEST_F(CFrameMouse, TheWheelStopsAtTheFirstThatTakesIt)
{
    RecordingContainer* const box = addContainer("box", {10, 10, 60, 60});
    RecordingView* const inner = add("inner", {0, 0, 50, 50}, box);
    inner->answers["wheel"] = true;
    RecordingView* const below = add("below", {0, 0, 120, 100});
    frame->bringViewToFront(box);
    below->answers["wheel"] = true;
    below->setMouseWheelState(false);

    EXPECT_TRUE(frame->onWheel({20, 20}, 0.5f, 0));
    EXPECT_THAT(taken(log), ElementsAre("box wheel 20,20 0.5", "inner axisY", "inner wheel 10,10 0.5"));
    EXPECT_TRUE(frame->onWheel({20, 20}, kMouseWheelAxisX, 0.5f, 0));
    EXPECT_THAT(taken(log), ElementsAre("box axisX", "inner axisX", "inner wheel 10,10 -0.5"));
    EXPECT_TRUE(frame->onWheel({20, 20}, kMouseWheelAxisX, 0.5f, kModShift));
    EXPECT_THAT(taken(log), ElementsAre("box axisX", "inner axisX", "inner wheel 10,10 0.5"));

    inner->setMouseWheelState(false);
    EXPECT_TRUE(frame->onWheel({20, 20}, 0.5f, 0));
    EXPECT_THAT(taken(log), ElementsAre("box wheel 20,20 0.5", "below wheel 20,20 0.5"));
    // The view that used the wheel gets the next moves.
    EXPECT_THAT(after({{"move", {150, 90}, 0}}).front(), "below move 150,90 0");
}

TEST_F(CFrameMouse, AModalViewGetsEverything)
{
    RecordingView* const below = add("below", {0, 0, 200, 100});
    below->answers = {{"down", kMouseHandled}, {"wheel", true}, {"move", kMouseHandled}};
    auto* const modal = new RecordingView(log, "modal", CRect(10, 10, 50, 50));
    auto* const second = new RecordingView(log, "second", CRect(10, 10, 50, 50));
    EXPECT_FALSE(frame->setModalView(below)) << "it is attached";
    EXPECT_EQ(frame->getModalView(), nullptr);
    EXPECT_TRUE(frame->setModalView(modal));
    EXPECT_FALSE(frame->setModalView(second));

    modal->answers["down"] = kMouseHandledNoMoves;
    EXPECT_EQ(send({"down", {100, 20}}), kMouseUnhandled);
    EXPECT_EQ(send({"down", {20, 20}}), kMouseUnhandled);
    modal->answers["down"] = kMouseHandled;
    EXPECT_EQ(send({"down", {20, 20}}), kMouseHandled);
    modal->answers["move"] = 7;
    EXPECT_EQ(send({"move", {100, 20}}), 7);
    EXPECT_FALSE(frame->onWheel({20, 20}, 1.0f, 0));
    EXPECT_FALSE(frame->onWheel({100, 20}, 1.0f, 0));
    EXPECT_EQ(send({"up", {20, 20}}), kMouseHandled);
    EXPECT_THAT(taken(log), ElementsAre("modal down 20,20 2", "modal down 20,20 2", "modal move 100,20 2",
                                        "modal wheel 20,20 1", "modal up 20,20 2"));

    EXPECT_TRUE(frame->setModalView(nullptr)); // the reference passes to the caller
    EXPECT_EQ(frame->getModalView(), nullptr);
    EXPECT_THAT(taken(log), IsEmpty());
    modal->forget();
    second->forget();
    EXPECT_THAT(taken(log), ElementsAre("modal gone", "second gone"));
    EXPECT_EQ(send({"down", {20, 20}}), kMouseHandled);
    EXPECT_THAT(taken(log), ElementsAre("below down 20,20 2"));
}

TEST_F(CFrameMouse, AViewMayGoBeforeTheMouseEntersIt)
{
    RecordingView* const left = add("left", {0, 0, 50, 50});
    RecordingView* const right = add("right", {60, 0, 90, 50});
    after({{"move", {5, 5}, 0}});
    left->reaction = [&](const std::string& what)
    {
        if (what == "exit")
            frame->removeView(right);
    };
    EXPECT_THAT(after({{"move", {70, 5}, 0}, {"move", {5, 5}, 0}}),
                ElementsAre("right move 70,5 0", "left exit 70,5 0", "right gone", "left move 5,5 0",
                            "left enter 5,5 0"));
}

// During each event the view is removed: alone, with its siblings, with its container, or with everything.
TEST_F(CFrameMouse, ViewsMayGoInTheMidstOfAnyEvent)
{
    const std::vector<MouseStep> steps = {{"move", {15, 15}, 0}, {"down", {15, 15}}, {"move", {25, 15}},
                                          {"wheel", {15, 15}},   {"up", {90, 90}},   {"move", {15, 15}, 0},
                                          {"move", {90, 90}, 0}, {"down", {90, 90}}, {"up", {90, 90}}};
    const std::vector<std::pair<const char*, std::function<void(CFrame&, CViewContainer&, CView&)>>> ways = {
        {"itself", [](CFrame&, CViewContainer& box, CView& view) { box.removeView(&view); }},
        {"its siblings", [](CFrame&, CViewContainer& box, CView&) { box.removeAll(); }},
        {"its container", [](CFrame& all, CViewContainer& box, CView&) { all.removeView(&box); }},
        {"everything", [](CFrame& all, CViewContainer&, CView&) { all.close(); }},
    };
    for (const auto& [way, remove] : ways)
        for (const char* word : {"enter", "down", "move", "wheel", "exit", "up", "loose"})
        {
            SCOPED_TRACE(testing::Message() << way << " goes in " << word);
            log.clear();
            RecordingContainer* const box = addContainer("box", {10, 10, 60, 60});
            add("below", {0, 0, 50, 50}, box)->answers["down"] = kMouseHandled;
            RecordingView* const view = add("view", {0, 0, 50, 50}, box);
            view->answers = {{"down", kMouseHandled}, {"wheel", true}};
            frame->setFocusView(view);
            int left = 1;
            view->reaction = [&, in = std::string(word), act = remove](const std::string& what)
            {
                if (what == in && left-- > 0)
                    act(*frame.get(), *box, *view);
            };
            after(steps);
            EXPECT_LE(left, 0) << "never happened";
            EXPECT_EQ(frame->getFocusView(), nullptr);
            frame->removeAll();
            EXPECT_EQ(frame->getReferenceCount(), 1);
        }
}
