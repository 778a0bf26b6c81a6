// SPDX-License-Identifier: GPL-3.0-or-later
// What is painted in parts looks as if all had been painted, bit for bit, in any tree of views.
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/views/tree/CFrame.h"

#include <gtest/gtest.h>
#include <random>

using namespace Tovra;

namespace
{
struct Dice
{
    int upTo(int most) { return int(random() % unsigned(most + 1)); }
    // Half of all coordinates are whole numbers.
    double from(int first, int last) { return first + upTo(last - first) + upTo(1) * upTo(99) / 100.0; }
    CRect rect(int reach)
    {
        const double left = from(-20, reach), top = from(-20, reach);
        return {left, top, left + from(0, 60), top + from(0, 40)};
    }
    CColor color()
    {
        const auto channel = [this] { return static_cast<unsigned char>(upTo(255)); };
        return {channel(), channel(), channel(), static_cast<unsigned char>(60 + upTo(195))};
    }

    std::mt19937 random;
};

// Draws one of many things, also beyond its edges.
class Scribble : public CView
{
public:
    Scribble(Dice& dice, int reach, CBitmap& shown) : CView(dice.rect(reach)), picture(shown)
    {
        change(dice);
    }

    void change(Dice& dice)
    {
        kind = dice.upTo(5);
        ink = dice.color();
        shift = dice.from(-5, 5);
    }

    void draw(CDrawContext* context) override
    {
        ++drawn;
        const CRect& all = getViewSize();
        context->setFillColor(ink);
        context->setFrameColor(ink);
        context->setLineWidth(1.5);
        if (kind == 0)
            context->drawEllipse(all, kFilledAndStroked);
        else if (kind == 1)
            context->line(all.left - 9, all.top - shift, all.right + 9, all.bottom + shift);
        else if (kind == 2)
            picture.draw(context, all, CPoint(2, 2));
        else if (kind == 3)
            drawText(*context, all);
        else if (kind == 4)
            drawWithinAClip(*context, all);
        else
            drawGradient(*context, all);
        setDirty(false);
    }

    static inline long drawn = 0; // of all of them

private:
    void drawText(CDrawContext& context, const CRect& all) const
    {
        context.setFont(shift > 0.0 ? &gNormalFont : &gNormalFont_NoLCD, 12.0, 0);
        context.setFontColor(ink);
        context.drawString("Wider than any view, wider than any", all, true, kTextCenter);
    }
    void drawWithinAClip(CDrawContext& context, const CRect& all) const
    {
        const CRect saved = context.getClipRect();
        CRect narrow(all.left + 3.5, all.top, all.right, all.bottom);
        context.setClipRect(narrow.bound(saved));
        picture.drawAlphaBlend(&context, all, CPoint(), 200);
        context.setClipRect(saved);
        context.drawArc(all, 20.0f, 200.0f, kStroked);
    }
    void drawGradient(CDrawContext& context, const CRect& all) const
    {
        context.getAGGRenderer()->fillLinearGradient(0, 0, 90, 50, {9, 200, 90, 255}, {250, 0, 9, 90}, 1.0);
        CDrawPath path(&context);
        path.moveTo(float(all.left - 4), float(all.top + shift));
        path.lineTo(float(all.right + 9), float(all.top + 7));
        path.lineTo(float(all.left + 3), float(all.bottom + 4));
        path.finish(kFilled, false);
    }

    CBitmap& picture;
    int kind = 0;
    CColor ink;
    double shift = 0.0;
};

class Tree
{
public:
    explicit Tree(unsigned seed, double scale = 1.0) : dice{std::mt19937(seed)}
    {
        memory.setSize(40, 30);
        for (unsigned i = 0; i < memory.getTotalBytes(); ++i)
            memory.getPixelPtr()[i] = static_cast<unsigned char>(i % 4 == 3 ? 255 : dice.upTo(255));
        picture->attachImg(&memory);
        const double left = dice.upTo(2) * dice.from(0, 9), top = dice.upTo(2) * dice.from(0, 9);
        frame = Kept<CFrame>::adopt(new CFrame({left, top, left + 160, top + 120}, nullptr, nullptr));
        frame->setScale(scale);
        fill(*frame.get(), 3);
        frame->idle();
    }
    ~Tree() { frame->close(); }

    // Three of four views are static from here on, and all containers keep their grounds.
    void keepGrounds()
    {
        Dice picks{std::mt19937(7)};
        for (CView* view : views)
            view->setStatic(picks.upTo(3) > 0);
        frame->keepGround(true);
        for (CView* view : views)
            if (CViewContainer* container = CViewContainer::of(view))
                container->keepGround(true);
    }

    void changeAView()
    {
        CView* const view = views[size_t(dice.upTo(int(views.size()) - 1))];
        if (auto* const scribble = dynamic_cast<Scribble*>(view))
            scribble->change(dice);
        const int what = dice.upTo(4);
        if (what == 0)
            view->setViewSize(dice.rect(130));
        else if (what == 1)
            view->setVisible(!view->isVisible());
        else
            view->setDirty(true);
    }

    std::vector<unsigned char> painted()
    {
        frame->idle();
        IOSBitmap& shown = *frame->getFrameBitmap();
        return {shown.getPixelPtr(), shown.getPixelPtr() + shown.getTotalBytes()};
    }

    Kept<CFrame> frame;

private:
    void fill(CViewContainer& container, int depth)
    {
        const int reach = 130 / (4 - depth);
        for (int i = 0; i < 4; ++i)
        {
            const bool isInner = depth > 0 && dice.upTo(1) == 0;
            views.push_back(isInner ? inner(reach, depth - 1) : new Scribble(dice, reach, *picture.get()));
            container.addView(views.back());
        }
    }
    CView* inner(int reach, int depth)
    {
        auto* const made = new CViewContainer(dice.rect(reach), dice.upTo(3) == 0 ? picture.get() : nullptr);
        CColor color = dice.color();
        color.alpha = dice.upTo(1) == 0 ? 255 : color.alpha;
        made->setBackgroundColor(color);
        made->setTransparency(dice.upTo(3) == 0);
        fill(*made, depth);
        return made;
    }

    Dice dice;
    CMACBitmap memory;
    Kept<CBitmap> picture = Kept<CBitmap>::adopt(new CBitmap(nullptr, true));
    std::vector<CView*> views;
};
}

TEST(PartialPainting, LooksAsIfAllHadBeenPainted)
{
    for (unsigned seed = 1; seed <= 90; ++seed)
    {
        constexpr double scales[] = {1.0, 1.25, 1.0, 1.5, 1.0, 2.0, 1.0, 0.8, 3.0};
        Tree tree(seed, scales[seed % std::size(scales)]);
        for (int step = 0; step < 12; ++step)
        {
            tree.changeAView();
            const auto inParts = tree.painted();
            tree.frame->setDirty(true);
            ASSERT_TRUE(inParts == tree.painted()) << "seed " << seed << ", step " << step;
        }
    }
}

TEST(PartialPainting, LooksTheSameOnKeptGrounds)
{
    for (unsigned seed = 1; seed <= 90; ++seed)
    {
        constexpr double scales[] = {1.0, 1.25, 1.0, 1.5, 2.0};
        const double scale = scales[seed % std::size(scales)];
        Tree through(seed, scale), onGrounds(seed, scale);
        onGrounds.keepGrounds();
        for (int step = 0; step < 12; ++step)
        {
            through.changeAView();
            onGrounds.changeAView();
            ASSERT_TRUE(onGrounds.painted() == through.painted()) << "seed " << seed << ", step " << step;
        }
    }
}

TEST(PartialPainting, DrawsWhatIsStaticOnce)
{
    Dice dice{std::mt19937(1)};
    const auto picture = Kept<CBitmap>::adopt(new CBitmap(nullptr, true));
    const auto frame = Kept<CFrame>::adopt(new CFrame({0, 0, 100, 60}, nullptr, nullptr));
    frame->keepGround(true);
    const auto below = new Scribble(dice, 0, *picture.get()), above = new Scribble(dice, 0, *picture.get());
    for (Scribble* view : {below, above})
    {
        view->setViewSize({10, 10, 90, 50});
        frame->addView(view);
    }
    below->setStatic(true);
    const auto drawnAfter = [&](CView& changed)
    {
        const long before = Scribble::drawn;
        changed.setDirty(true);
        frame->idle();
        return Scribble::drawn - before;
    };
    EXPECT_EQ(drawnAfter(*frame.get()), 2);
    EXPECT_EQ(drawnAfter(*above), 1);
    EXPECT_EQ(drawnAfter(*above), 1);
    EXPECT_EQ(drawnAfter(*below), 2);
    EXPECT_EQ(drawnAfter(*above), 1);
    above->setStatic(true);
    EXPECT_EQ(drawnAfter(*above), 2);
    frame->setScale(2.0);
    EXPECT_EQ(drawnAfter(*above), 2);
    frame->setBackgroundColor({0, 0, 0, 128}); // no ground that hides what is beneath
    EXPECT_EQ(drawnAfter(*above), 2);
    EXPECT_EQ(drawnAfter(*above), 2);
    frame->close();
}
