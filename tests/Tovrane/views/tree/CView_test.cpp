// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/views/tree/RecordingView.h"

#include <cmath>

using namespace Tovra;

namespace
{
class ScalingEditor final : public IFrameEditor
{
public:
    void convertWorldToPlugin(CPoint& p) const override { p = CPoint(p.x / 2, p.y / 2); }
    void convertPluginToWorld(CPoint& p) const override { p = CPoint(p.x * 2, p.y * 2); }
    void convertPluginToWorld(CRect& r) const override
    {
        r = CRect(r.left * 2, r.top * 2, r.right * 2, r.bottom * 2);
    }
    double getEffectTempo() const override { return 128.0; }
    double getSampleRate() const override { return 96000.0; }
    void beginEdit(Orbel::ParameterProperty*) override {}
    void endEdit(Orbel::ParameterProperty*) override {}
    void performEdit(Orbel::ParameterProperty*) override {}
};

using CViewInFrame = HeadlessTest;
}

TEST(CView, HitsOnAllFourEdges)
{
    CView view({10, 20, 30, 40});
    const struct
    {
        CPoint where;
        bool hit, inside;
    } cases[] = {
        {{10, 20}, true, true},       {{30, 40}, true, false},  {{9.999, 20}, false, false},
        {{30.001, 30}, false, false}, {{20, 19}, false, false}, {{std::nan(""), 30}, false, false},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(view.hitTest(c.where), c.hit) << testing::PrintToString(c.where);
        EXPECT_EQ(view.getViewSize().pointInside(c.where), c.inside) << testing::PrintToString(c.where);
    }
    view.setMouseableArea({0, 0, 5, 5});
    EXPECT_TRUE(view.hitTest({0, 0}));
    EXPECT_FALSE(view.hitTest({20, 30}));
}

TEST(CView, IsUpdatedByWhatTouchesIt)
{
    const CView view({10, 10, 20, 20});
    EXPECT_TRUE(view.checkUpdate({0, 0, 10, 10}));
    EXPECT_TRUE(view.checkUpdate({20, 20, 30, 30}));
    EXPECT_TRUE(view.checkUpdate({12, 12, 13, 13}));
    EXPECT_FALSE(view.checkUpdate({0, 0, 9.9, 30}));
    EXPECT_FALSE(view.checkUpdate({0, 20.1, 30, 30}));
}

TEST(CView, ACopyIsDetachedAndSharesTheBackground)
{
    const auto bitmap = Kept<CBitmap>::adopt(new CBitmap("no such picture", false));
    auto view = Kept<CView>::adopt(new CView({1, 2, 3, 4}));
    view->setBackground(bitmap.get());
    view->setBackground(bitmap.get());
    EXPECT_EQ(bitmap->getReferenceCount(), 2);
    view->setMouseableArea({5, 6, 7, 8});
    view->setEnabled(false);
    auto copy = Kept<CView>::adopt(view->newCopy());
    EXPECT_EQ(bitmap->getReferenceCount(), 3);
    EXPECT_EQ(copy->getMouseableArea(), CRect(5, 6, 7, 8));
    EXPECT_FALSE(copy->isEnabled() || copy->isAttached());
    copy.reset();
    view.reset();
    EXPECT_EQ(bitmap->getReferenceCount(), 1);
}

TEST(CView, AnswersItsTypesByName)
{
    CViewContainer container({0, 0, 1, 1});
    PlainControl control({0, 0, 1, 1});
    EXPECT_TRUE(control.isTypeOf("CControl") && control.isTypeOf("CView"));
    EXPECT_FALSE(control.isTypeOf("CViewContainer") || control.isTypeOf("cview") ||
                 control.isTypeOf(nullptr));
    EXPECT_EQ(CViewContainer::of(&container), &container);
    EXPECT_EQ(CViewContainer::of(&control), nullptr);
    EXPECT_EQ(CControl::of(&control), &control);
    EXPECT_EQ(CControl::of(&container), nullptr);
    // Messages are compared by pointer.
    EXPECT_EQ(container.notify(nullptr, std::string(kMsgCheckIfViewContainer).c_str()), 0);
}

TEST_F(CViewInFrame, HoldsTheFrameFromAttachedToRemoved)
{
    EXPECT_EQ(frame->getReferenceCount(), 1);
    RecordingContainer* const box = addContainer("box", {0, 0, 50, 50});
    RecordingView* const view = add("view", {0, 0, 50, 50}, box);
    EXPECT_EQ(frame->getReferenceCount(), 3);
    EXPECT_FALSE(view->attached(box));
    EXPECT_FALSE(frame->addView(view)) << "it is attached elsewhere";

    const Kept<CView> kept(view);
    frame->removeView(box, true);
    EXPECT_EQ(view->getFrame(), nullptr);
    EXPECT_EQ(view->getParentView(), nullptr);
    EXPECT_FALSE(view->removed(box));
    EXPECT_EQ(frame->getReferenceCount(), 1);
    view->setDirty(true);
    EXPECT_EQ(view->getVisibleSize(), CRect());
}

// The last view may hold the last reference to the frame.
TEST_F(CViewInFrame, TheFrameMayGoWithItsLastView)
{
    CFrame* const bare = frame.get();
    auto* const view = add("view", {0, 0, 50, 50});
    const Kept<CView> kept(view);
    frame.reset();
    ASSERT_EQ(bare->getReferenceCount(), 1);
    view->getFrame()->removeView(view);
    EXPECT_EQ(view->getFrame(), nullptr);
}

TEST_F(CViewInFrame, ConvertsThroughAllContainers)
{
    RecordingContainer* const outer = addContainer("outer", {10, 20, 90, 90});
    RecordingContainer* const inner = addContainer("inner", {5, 6, 50, 50}, outer);
    RecordingView* const view = add("view", {1, 2, 3, 4}, inner);
    CPoint point(100, 100);
    EXPECT_EQ(view->frameToLocal(point), CPoint(85, 74)); // its parent's coordinates
    EXPECT_EQ(view->localToFrame(point), CPoint(100, 100));
    EXPECT_EQ(inner->frameToLocal(point), CPoint(85, 74)); // for a container its own
    CRect rect(0, 0, 1, 1);
    frame->localRectToFrameRect(view, rect);
    EXPECT_EQ(rect, CRect(15, 26, 16, 27));
    EXPECT_EQ(view->getVisibleSize(), CRect(1, 2, 3, 4));
    EXPECT_EQ(inner->getVisibleSize(CRect(-9, -9, 999, 999)), CRect(0, 0, 45, 44));
}

TEST_F(CViewInFrame, StandsInTheCoordinatesOfTheEditor)
{
    ScalingEditor editor;
    const auto scaled = Kept<CFrame>::adopt(new CFrame({0, 0, 50, 50}, nullptr, &editor));
    scaled->addView(new RecordingView(log, "view", CRect(0, 0, 50, 50)));
    HeadlessFrame& scaledWindow = *HeadlessFrame::of(*scaled.get());
    scaledWindow.events().press({60, 40}, kButtonLeft);
    EXPECT_THAT(taken(log), testing::ElementsAre("view down 30,20 2"));
    scaled->idle();
    EXPECT_EQ(scaledWindow.lastInvalidation(), CRect(0, 0, 100, 100));
    scaledWindow.setMouse({10, 10}, kButtonRight);
    CPoint where;
    EXPECT_TRUE(scaled->getCurrentMouseLocation(where));
    EXPECT_EQ(where, CPoint(5, 5));
    scaled->close();
}
