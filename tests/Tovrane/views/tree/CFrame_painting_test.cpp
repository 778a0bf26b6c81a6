// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/views/tree/RecordingView.h"
#include "Tovrane/window/IFrame.h"

#include <cmath>
#include <limits>
#include <thread>

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class CFramePainting : public HeadlessTest
{
protected:
    std::vector<CRect> dirtyRects()
    {
        std::vector<CRect> rects;
        for (std::int32_t i = 0; i < frame->getDirtyRects().size(); ++i)
            rects.push_back(frame->getDirtyRects()[i]);
        return rects;
    }
};

CViewContainer* panel(const CRect& rect, CColor color)
{
    auto* const made = new CViewContainer(rect);
    made->setBackgroundColor(color);
    return made;
}
}

TEST_F(CFramePainting, GathersRectanglesWithoutMergingThem)
{
    settle();
    const CRect a(10, 10, 20, 20), within(12, 10, 20, 18), around(5, 5, 25, 25), apart(12, 12, 30, 30);
    const CRect fractional(12.9, 12.1, 29.1, 29.9); // in whole pixels it is apart
    const struct
    {
        CRect added;
        size_t count;
    } steps[] = {{a, 1},          {a, 1},     {within, 1}, {around, 2},
                 {fractional, 3}, {apart, 3}, {within, 3}, {fractional, 3}};
    for (const auto& step : steps)
    {
        frame->addDirtyRect(step.added);
        EXPECT_EQ(dirtyRects().size(), step.count);
    }
    EXPECT_THAT(dirtyRects(), ElementsAre(a, around, apart));
    EXPECT_EQ(frame->getDirtyRects()[3], CRect());
    EXPECT_EQ(frame->getDirtyRects()[-1], CRect());
}

TEST_F(CFramePainting, DrawsEverythingBeyond64Rectangles)
{
    std::vector<RecordingView*> views;
    for (int i = 0; i < 65; ++i)
        views.push_back(add("view", CRect(i * 2, 0, i * 2 + 1, 10)));
    RecordingView* const untouched = add("untouched", {0, 50, 10, 60});
    settle();
    EXPECT_THAT(dirtyRects(), IsEmpty());

    for (int i = 0; i < 64; ++i)
        views[size_t(i)]->setDirty(true);
    EXPECT_FALSE(frame->isDirty());
    views[64]->setDirty(true);
    EXPECT_TRUE(frame->isDirty());
    frame->idle();
    EXPECT_EQ(log.size(), 66u);
    EXPECT_THAT(log, testing::Contains(testing::StartsWith("untouched draw")));
    EXPECT_THAT(dirtyRects(), IsEmpty());
    EXPECT_FALSE(frame->isDirty() || untouched->isDirty());
}

TEST_F(CFramePainting, ShowsOnlyWhatWasDrawn)
{
    RecordingView* const view = add("view", {10, 10, 20, 20});
    frame->idle();
    const long shown = window().invalidations();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(window().lastInvalidation(), CRect(0, 0, 200, 100));
    frame->idle();
    EXPECT_EQ(window().invalidations(), shown);
    view->setDirty(true);
    frame->idle();
    EXPECT_EQ(window().invalidations(), shown + 1);
    EXPECT_EQ(window().lastInvalidation(), CRect(10, 10, 20, 20));
    frame->addDirtyRect({50, 50, 50, 60});
    frame->addDirtyRect({std::nan(""), 50, 60, 60});
    frame->idle();
    EXPECT_EQ(window().invalidations(), shown + 1);
}

TEST_F(CFramePainting, ViewsMarkWhatOfThemIsVisible)
{
    CViewContainer* const outer = place(panel({10, 20, 60, 60}, kRedCColor));
    CViewContainer* const inner = place(panel({30, 30, 90, 90}, kBlueCColor), outer);
    RecordingView* const view = add("view", {10, 5, 30, 15}, inner);
    settle();

    view->setDirty(true); // 50,55 to 70,65 in the frame, clipped by outer
    EXPECT_THAT(dirtyRects(), ElementsAre(CRect(50, 55, 60, 60)));
    EXPECT_TRUE(inner->isDirty() && outer->isDirty());
    settle();
    view->setViewSize({0, 0, 5, 5});
    EXPECT_THAT(dirtyRects(), ElementsAre(CRect(50, 55, 60, 60), CRect(40, 50, 45, 55)));
    settle();
    view->setViewSize({1, 1, 2, 2}, false);
    view->setDirty(false);
    EXPECT_THAT(dirtyRects(), IsEmpty());
    view->setVisible(true); // is drawn again though nothing changes
    EXPECT_EQ(dirtyRects().size(), 1u);
    settle();
    view->setViewSize({-20, 0, -10, 9});
    frame->idle();
    EXPECT_FALSE(view->isVisible());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(CFramePainting, DrawsIntoClippedPlaces)
{
    CViewContainer* const box = place(panel({10.75, 20.25, 60.75, 60.25}, kRedCColor));
    add("view", {5.5, 5, 15, 15}, box);
    frame->idle();
    // The box has a fractional origin; its content is drawn at 10, 20.
    EXPECT_THAT(log, ElementsAre("view draw at 10,20 clip 5.5,5,15,15"));
    frame->addDirtyRect({12, 22, 20, 30});
    log.clear();
    frame->idle();
    EXPECT_THAT(log, ElementsAre("view draw at 10,20 clip 5.5,5,10,10"));
}

TEST_F(CFramePainting, AnAnimationMarksItselfForTheNextPass)
{
    RecordingView* const view = add("view", {0, 0, 10, 10});
    view->reaction = [&](const std::string&) { view->setDirty(true); };
    settle();
    for (int pass = 0; pass < 3; ++pass)
    {
        frame->idle();
        EXPECT_EQ(taken(log).size(), 1u);
    }
}

TEST_F(CFramePainting, ViewsMayGoWhileTheyAreDrawn)
{
    CViewContainer* const box = place(panel({0, 0, 100, 100}, kRedCColor));
    RecordingView* const first = add("first", {0, 0, 10, 10}, box);
    add("second", {0, 0, 10, 10}, box);
    first->reaction = [&](const std::string&) { frame->removeView(box); };
    frame->idle();
    EXPECT_EQ(log.front(), "first draw at 0,0 clip 0,0,10,10");
    EXPECT_EQ(frame->getNbViews(), 0);
    EXPECT_EQ(frame->getReferenceCount(), 1);
}

// Listeners of a parameter do this on any thread.
TEST_F(CFramePainting, MarksFromOtherThreadsAreTakenUpByTheNextIdle)
{
    CViewContainer* const box = place(panel({10, 10, 60, 60}, kRedCColor));
    RecordingView* const view = add("view", {0, 0, 10, 10}, box);
    settle();
    std::thread([&] { view->setDirty(true); }).join();
    EXPECT_TRUE(view->isDirty());
    EXPECT_THAT(dirtyRects(), IsEmpty());
    frame->idle();
    EXPECT_EQ(taken(log).size(), 1u);
    frame->idle();
    EXPECT_THAT(log, IsEmpty());

    std::atomic<bool> stop = false;
    std::thread writer(
        [&]
        {
            while (!stop)
                view->setVisible(true);
        });
    for (int i = 0; i < 100; ++i)
        frame->idle();
    stop = true;
    writer.join();
    log.clear();
    view->setDirty(true);
    frame->idle();
    EXPECT_EQ(log.size(), 1u);
}

TEST_F(CFramePainting, ThePictureFollowsTheSizeThatTheFrameWasGiven)
{
    settle();
    frame->setSize(300, 200);
    EXPECT_EQ(frame->getViewSize(), CRect(0, 0, 200, 100)); // only the window's size has changed
    CRect size;
    EXPECT_TRUE(frame->getSize(size));
    EXPECT_EQ(size, CRect(0, 0, 300, 200));

    frame->setViewSize({0, 0, 250, 150});
    EXPECT_EQ(frame->getFrameBitmap()->getWidth(), 250u);
    EXPECT_TRUE(frame->isDirty());
    frame->setBackgroundColor(kBlueCColor);
    frame->idle();
    EXPECT_EQ(frame->getFrameBitmap()->getPixelPtr()[149 * 250 * 4 + 249 * 4], 255);

    window().refusesSize = true;
    EXPECT_FALSE(frame->setSize(10, 10));
}

TEST_F(CFramePainting, HostileSizesNeitherCrashNorTakeMemory)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    const double nan = std::nan("");
    const CRect sizes[] = {{0, 0, 1e9, 1e9},     {-1e300, 0, 1e300, 10}, {0, 0, 10, inf}, {-inf, 0, inf, 10},
                           {nan, nan, nan, nan}, {0, 0, nan, 10},        {10, 10, 0, 0},  {0, 0, -5, 1e9}};
    for (const CRect& size : sizes)
    {
        SCOPED_TRACE(testing::PrintToString(size));
        CViewContainer* const box = place(panel(size, kRedCColor));
        add("view", size, box);
        frame->setViewSize(size);
        EXPECT_LE(frame->getFrameBitmap()->getTotalBytes(), 64u << 20);
        CPoint point(5, 5);
        frame->onMouseDown(point, kButtonLeft);
        frame->onMouseMoved(point, 0);
        frame->idle();
        frame->setViewSize({0, 0, 20, 20});
        frame->idle();
        frame->removeAll();
    }
}

TEST_F(CFramePainting, AScaleChangesPixelsAndNotUnits)
{
    add("view", {10, 10, 100, 60});
    frame->setViewSize({0, 0, 121, 77});
    const auto pixelsOf = [&]
    {
        frame->idle();
        CRect window;
        EXPECT_TRUE(frame->getSize(window));
        const IOSBitmap& picture = *frame->getFrameBitmap();
        EXPECT_EQ(window.getSize(), CPoint(picture.getWidth(), picture.getHeight()));
        return window.getSize();
    };
    frame->setScale(1.25);
    EXPECT_EQ(pixelsOf(), CPoint(152, 97));
    frame->setScale(1.1); // the product of which and 110 lies above 121
    frame->setViewSize({0, 0, 110, 110});
    EXPECT_EQ(pixelsOf(), CPoint(121, 121));
    frame->setScale(2.5);
    taken(log);
    window().events().press({50, 75}, kButtonLeft);
    EXPECT_THAT(taken(log), testing::Contains("view down 20,30 2"));
    for (const double refused : {0.0, -1.0, 1e9, std::nan("")})
        frame->setScale(refused);
    EXPECT_EQ(frame->getScale(), 2.5);
    EXPECT_EQ(frame->getViewSize(), CRect(0, 0, 110, 110));
}

TEST(CFrame, WorksWithoutAnyWindowSystem)
{
    IFrame::setFallbackFactory(nullptr);
    const auto frame = Kept<CFrame>::adopt(new CFrame({0, 0, 20, 10}, nullptr, nullptr));
    useHeadlessFrames();
    frame->setBackgroundColor(kBlueCColor);
    frame->idle();
    EXPECT_EQ(frame->getFrameBitmap()->getPixelPtr()[9 * 20 * 4], 255);
    CRect size;
    EXPECT_FALSE(frame->setSize(30, 30) || frame->getSize(size) || frame->setCursor(kCursorHand));
    EXPECT_EQ(frame->createOptionMenu(), nullptr);
    EXPECT_EQ(frame->createOSTextEdit(nullptr, nullptr), nullptr);
    EXPECT_EQ(frame->createFileSelector(), nullptr);
    frame->close();
}
