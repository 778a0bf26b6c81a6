// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/RecordingView.h"

using namespace Tovra;
using testing::ElementsAre;

namespace
{
std::vector<CView*> childrenOf(const CViewContainer& container)
{
    std::vector<CView*> views;
    for (long i = 0; i < container.getNbViews(); ++i)
        views.push_back(container.getView(i));
    return views;
}

using CViewContainerInFrame = HeadlessTest;
}

TEST_F(CViewContainerInFrame, AddsOnTopOrBelow)
{
    RecordingView* const a = add("a", {0, 0, 9, 9});
    RecordingView* const b = add("b", {0, 0, 9, 9});
    EXPECT_FALSE(frame->addView(nullptr));
    EXPECT_FALSE(frame->addView(a));
    EXPECT_FALSE(frame->addView(a, b));

    auto* const below = new RecordingView(log, "below", CRect(0, 0, 9, 9));
    settle();
    EXPECT_TRUE(frame->addView(below, b));
    EXPECT_FALSE(below->isAttached()) << "nothing attaches it";
    EXPECT_EQ(below->getFrame(), nullptr);
    EXPECT_EQ(frame->getDirtyRects().size(), 0);
    auto* const area = new RecordingView(log, "area", CRect(0, 0, 9, 9));
    EXPECT_TRUE(frame->addView(area, CRect(1, 1, 2, 2), false));
    EXPECT_TRUE(area->isAttached());
    EXPECT_FALSE(area->getMouseEnabled());
    EXPECT_EQ(area->getMouseableArea(), CRect(1, 1, 2, 2));
    EXPECT_EQ(frame->getDirtyRects().size(), 1);
    EXPECT_THAT(childrenOf(*frame.get()), ElementsAre(a, below, b, area));

    frame->bringViewToFront(a);
    EXPECT_THAT(childrenOf(*frame.get()), ElementsAre(below, b, area, a));

    frame->setTopView(b);
    RecordingView* const later = add("later", {0, 0, 9, 9});
    EXPECT_THAT(childrenOf(*frame.get()), ElementsAre(below, area, a, later, b));
    frame->removeView(b);
    EXPECT_EQ(frame->getTopView(), nullptr) << "another view may be made in its place";
    frame->setTopView(below); // is not attached
    frame->removeView(below);
    EXPECT_EQ(frame->getTopView(), nullptr);
    frame->setTopView(a);
    frame->removeAll();
    EXPECT_EQ(frame->getTopView(), nullptr);
}

TEST_F(CViewContainerInFrame, AttachesATreeThatIsBuiltApart)
{
    auto* const box = new RecordingContainer(log, "box", CRect(0, 0, 50, 50));
    RecordingView* const inner = add("inner", {0, 0, 9, 9}, box);
    EXPECT_FALSE(box->addView(inner) || box->addView(inner, nullptr) || box->addView(box));
    EXPECT_FALSE(inner->isAttached());
    place(box);
    EXPECT_TRUE(box->isAttached() && inner->isAttached());
    EXPECT_EQ(inner->getParentView(), box);
    EXPECT_EQ(inner->getFrame(), frame.get());

    const Kept<CView> kept(inner);
    frame->removeView(box, false);
    EXPECT_TRUE(box->isChild(inner)) << "the tree stays together";
    EXPECT_FALSE(inner->isAttached());
    place(box);
    EXPECT_TRUE(inner->isAttached());
}

TEST_F(CViewContainerInFrame, AViewMayRemoveItselfWhileItIsTold)
{
    class Leaving : public CView
    {
    public:
        using CView::CView;
        bool removed(CView* parent) override
        {
            if (!CView::removed(parent))
                return false;
            return CViewContainer::of(parent)->removeView(this);
        }
    };
    place(new Leaving({0, 0, 9, 9}));
    CView* const other = add("other", {0, 0, 9, 9});
    EXPECT_TRUE(frame->removeView(frame->getView(0)));
    EXPECT_THAT(childrenOf(*frame.get()), ElementsAre(other));
    place(new Leaving({0, 0, 9, 9}));
    EXPECT_TRUE(frame->removeAll());
    EXPECT_EQ(frame->getReferenceCount(), 1);
}

// Keys walk from above, the loss of the focus from below. Each child is visited once unless it was removed;
// one that is added is visited if the walk has not passed its position.
TEST_F(CViewContainerInFrame, AWalkStepsOverWhatChanges)
{
    const struct
    {
        const char* name;
        std::function<void(CViewContainer&, std::vector<RecordingView*>&)> change; // when c is visited
        const char *fromAbove, *fromBelow;
    } cases[] = {
        {"nothing", [](CViewContainer&, auto&) {}, "dcba", "abcd"},
        {"a goes", [](CViewContainer& box, auto& v) { box.removeView(v[0]); }, "dcb", "abcd"},
        {"c goes", [](CViewContainer& box, auto& v) { box.removeView(v[2]); }, "dcba", "abcd"},
        {"d goes", [](CViewContainer& box, auto& v) { box.removeView(v[3]); }, "dcba", "abc"},
        {"all go", [](CViewContainer& box, auto&) { box.removeAll(); }, "dc", "abc"},
        {"a comes up", [](CViewContainer& box, auto& v) { box.bringViewToFront(v[0]); }, "dcb", "abcd"},
        {"e above", [](CViewContainer& box, auto& v) { box.addView(v[4]); }, "dcba", "abcde"},
        {"e below", [](CViewContainer& box, auto& v) { box.addView(v[4], v[0]); }, "dcbae", "abcd"},
    };
    for (const auto& c : cases)
        for (const bool above : {true, false})
        {
            SCOPED_TRACE(testing::Message() << c.name << (above ? ", from above" : ", from below"));
            RecordingContainer* const box = addContainer("box", {0, 0, 50, 50});
            std::vector<RecordingView*> views;
            for (const char* name : {"a", "b", "c", "d"})
                views.push_back(add(name, {0, 0, 9, 9}, box));
            auto* const extra = new RecordingView(log, "e", CRect(0, 0, 9, 9));
            const Kept<CView> kept = Kept<CView>::adopt(extra);
            views.push_back(extra);
            extra->remember(); // for the container
            bool done = false;
            views[2]->reaction = [&](const std::string&)
            {
                if (!std::exchange(done, true))
                    c.change(*box, views);
            };
            log.clear();
            TovraKeyCode code;
            if (above)
                box->CViewContainer::onKeyDown(code);
            else
                box->CViewContainer::looseFocus();
            std::string visited;
            for (const std::string& entry : log)
                if (entry.find("gone") == std::string::npos)
                    visited += entry[0];
            EXPECT_EQ(visited, above ? c.fromAbove : c.fromBelow);
            if (!box->isChild(extra))
                extra->forget();
            frame->removeAll();
        }
}

// The children are dropped without being told, and without forget.
TEST_F(CViewContainerInFrame, RemovingAStrangerDropsAllChildren)
{
    RecordingContainer* const box = addContainer("box", {0, 0, 50, 50});
    RecordingView* const child = add("child", {0, 0, 50, 50}, box);
    child->answers["down"] = kMouseHandled;
    user().press({5, 5}, kButtonLeft);
    log.clear();
    CView stranger({0, 0, 1, 1});
    EXPECT_FALSE(box->removeView(&stranger));
    EXPECT_EQ(box->getNbViews(), 0);
    EXPECT_TRUE(child->isAttached());
    user().release({5, 5}, kButtonLeft);
    EXPECT_THAT(taken(log), ElementsAre("box up 5,5 2"));

    child->removed(box);
    child->forget();
    EXPECT_THAT(taken(log), ElementsAre("child gone"));
}

TEST_F(CViewContainerInFrame, FindsWhatLiesUnderAPoint)
{
    RecordingContainer* const box = addContainer("box", {10, 10, 60, 60});
    RecordingView* const inner = add("inner", {5, 5, 20, 20}, box);
    RecordingView* const hidden = add("hidden", {0, 0, 200, 100});
    hidden->setVisible(false);
    const struct
    {
        CPoint where;
        CView *shallow, *deep;
    } cases[] = {
        {{15, 15}, box, inner}, // 5, 5 in the box
        {{30, 30}, box, inner}, // its last corner
        {{31, 30}, box, nullptr}, {{60, 60}, box, nullptr}, {{61, 60}, nullptr, nullptr},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(testing::PrintToString(c.where));
        EXPECT_EQ(frame->getViewAt(c.where), c.shallow);
        EXPECT_EQ(frame->getViewAt(c.where, true), c.deep);
        CViewContainer* const around = c.shallow == box ? static_cast<CViewContainer*>(box) : frame.get();
        EXPECT_EQ(frame->getContainerAt(c.where, true), around);
        EXPECT_EQ(frame->getContainerAt(c.where, false), frame.get());
    }
    EXPECT_TRUE(box->hitTestSubViews({15, 15}));
    EXPECT_FALSE(box->hitTestSubViews({5, 5}));
    inner->setMouseEnabled(false);
    EXPECT_FALSE(box->hitTestSubViews({15, 15}));
}

TEST_F(CViewContainerInFrame, IsDirtyWithAnyChildThatCanBeSeen)
{
    RecordingContainer* const box = addContainer("box", {10, 10, 60, 60});
    RecordingView* const child = add("child", {0, 0, 50, 50}, box);
    const auto clean = [&]
    {
        child->setDirty(false);
        box->setDirty(false);
    };
    clean();
    EXPECT_FALSE(box->isDirty());
    child->setDirty(true);
    EXPECT_TRUE(box->isDirty());
    settle();
    box->setDirty(false);
    child->setViewSize({60, 0, 90, 50}); // outside
    EXPECT_FALSE(box->isDirty());
    child->setViewSize({49, 0, 90, 50});
    EXPECT_TRUE(box->isDirty());

    clean();
    settle();
    child->setDirty(true);
    settle();
    child->setDirty(true);
    EXPECT_EQ(frame->getDirtyRects().size(), 1);
    const long shown = window().invalidations();
    box->setDirty(false);
    EXPECT_TRUE(box->invalidateDirtyViews()); // the child marks itself as dirty again
    EXPECT_EQ(window().invalidations(), shown);
    box->setDirty(true);
    box->invalidateDirtyViews();
    EXPECT_EQ(window().invalidations(), shown + 1);
    box->setVisible(false);
    EXPECT_FALSE(child->isVisible());
    box->invalid();
    EXPECT_EQ(window().invalidations(), shown + 1);
}

TEST(CViewContainer, ACopyHoldsCopiesOfItsChildren)
{
    Log log;
    auto original = Kept<CViewContainer>::adopt(new CViewContainer({0, 0, 50, 50}));
    original->setBackgroundColor(kRedCColor);
    original->addView(new RecordingView(log, "a", CRect(1, 1, 2, 2)));
    original->addView(new RecordingView(log, "b", CRect(3, 3, 4, 4)));
    auto copy = Kept<CView>::adopt(original->newCopy());
    original.reset();
    EXPECT_THAT(taken(log), ElementsAre("a gone", "b gone"));
    CViewContainer* const copied = CViewContainer::of(copy.get());
    ASSERT_EQ(copied->getNbViews(), 2);
    EXPECT_EQ(copied->getView(1)->getViewSize(), CRect(3, 3, 4, 4));
    EXPECT_EQ(copied->getBackgroundColor(), kRedCColor);
}

TEST(CViewContainer, PassesMessagesToTheFirstThatAnswers1)
{
    class Answering : public CView
    {
    public:
        Answering(long withAnswer, int& counter) : CView({0, 0, 1, 1}), answer(withAnswer), asked(counter) {}
        long notify(CBaseObject*, const char* message) override
        {
            return message == kMsgCheckIfViewContainer ? 0 : (++asked, answer);
        }

    private:
        long answer;
        int& asked;
    };
    int asked = 0;
    const auto box = Kept<CViewContainer>::adopt(new CViewContainer({0, 0, 1, 1}));
    EXPECT_EQ(box->notify(nullptr, "message"), 0);
    box->addView(new Answering(7, asked));
    EXPECT_EQ(box->notify(nullptr, "message"), 7);
    box->addView(new Answering(1, asked));
    box->addView(new Answering(5, asked));
    EXPECT_EQ(box->notify(nullptr, "message"), 1);
    EXPECT_EQ(asked, 3);
}
