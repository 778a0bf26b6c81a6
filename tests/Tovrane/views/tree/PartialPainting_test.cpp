// SPDX-License-Identifier: GPL-3.0-or-later
// What is painted in parts looks as if all had been painted, bit for bit, in any tree of views.
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/views/tree/CFrame.h"
#include "support/Png.h"
#include "support/PngBytes.h"

#include <gtest/gtest.h>
#include <random>

using namespace Tovra;

namespace
{
struct Dice
{
    int upTo(int most) { return int(random() % unsigned(most + 1)); }
    // Half of all coordinates are whole numbers.
    double coordinate(int from, int to)
    {
        const double whole = from + upTo(to - from);
        return upTo(1) == 0 ? whole : whole + upTo(99) / 100.0;
    }
    CRect rect(int from, int to)
    {
        const double left = coordinate(from, to), top = coordinate(from, to);
        return {left, top, left + coordinate(0, 60), top + coordinate(0, 40)};
    }
    CColor color(int leastAlpha)
    {
        const auto channel = [this](int least)
        { return static_cast<unsigned char>(least + upTo(255 - least)); };
        return {channel(0), channel(0), channel(0), channel(leastAlpha)};
    }

    std::mt19937 random;
};

// Draws a bit of everything, also beyond its edges.
class Scribble : public CView
{
public:
    Scribble(const CRect& rect, Dice& thrown, CBitmap& picture) : CView(rect), bitmap(picture)
    {
        change(thrown);
    }

    void change(Dice& dice)
    {
        kind = dice.upTo(5);
        ink = dice.color(80);
        line = dice.color(80);
        font = dice.upTo(1) == 0 ? &gNormalFont : &gNormalFont_NoLCD;
        shift = dice.coordinate(-5, 5);
    }

    void draw(CDrawContext* context) override
    {
        context->setFillColor(ink);
        context->setFrameColor(line);
        context->setLineWidth(1.5);
        const CRect& all = getViewSize();
        switch (kind)
        {
        case 0:
            context->drawEllipse(all, kFilledAndStroked);
            break;
        case 1:
            context->line(all.left - 9, all.top - shift, all.right + 9, all.bottom + shift);
            context->drawRoundRect(all, 5.0f, kStroked);
            break;
        case 2:
            context->setFont(font, 12.0, 0);
            context->setFontColor(ink);
            context->drawString("Wider than a view is, wider than a view is", all, true, kTextCenter);
            break;
        case 3:
            bitmap.draw(context, all, CPoint(2, 2));
            break;
        case 4:
            drawWithinItsClip(*context);
            break;
        default:
            drawGradient(*context);
        }
        setDirty(false);
    }

private:
    void drawWithinItsClip(CDrawContext& context)
    {
        const CRect saved = context.getClipRect();
        CRect narrow = getViewSize();
        narrow.left += 3.5;
        context.setClipRect(narrow.bound(saved));
        bitmap.drawAlphaBlend(&context, getViewSize(), CPoint(), 200);
        context.setClipRect(saved);
        context.drawArc(getViewSize(), 20.0f, 200.0f, kStroked);
    }

    void drawGradient(CDrawContext& context)
    {
        const CRect& all = getViewSize();
        context.getAGGRenderer()->fillLinearGradient(0, 0, 90 + shift, 50, {9, 200, 90, 255}, {250, 0, 9, 90},
                                                     1.0);
        CDrawPath path(&context);
        path.moveTo(float(all.left - 4), float(all.top + shift));
        path.lineTo(float(all.right + 9), float(all.top + 7));
        path.lineTo(float(all.left + 3), float(all.bottom + 4));
        path.closePath();
        path.finish(kFilled, false);
    }

    CBitmap& bitmap;
    int kind = 0;
    CColor ink, line;
    CFontDesc* font = nullptr;
    double shift = 0.0;
};

class Tree
{
public:
    explicit Tree(unsigned seed) : dice{std::mt19937(seed)}
    {
        Png noise{.width = 40, .height = 30, .colorType = PNG_COLOR_TYPE_RGB_ALPHA};
        for (int i = 0; i < 40 * 30 * 4; ++i)
            noise.samples.push_back(static_cast<unsigned char>(dice.upTo(255)));
        PngBytes stream(noise);
        bitmap->loadFromStream(&stream);
        const CPoint origin =
            dice.upTo(2) > 0 ? CPoint() : CPoint(dice.coordinate(0, 9), dice.coordinate(0, 9));
        frame = Kept<CFrame>::adopt(
            new CFrame({origin.x, origin.y, origin.x + 160, origin.y + 120}, nullptr, nullptr));
        fill(*frame.get(), 3);
        frame->idle();
    }
    ~Tree() { frame->close(); }

    // Of one view; it is marked as dirty.
    void change()
    {
        CView* const view = views[size_t(dice.upTo(int(views.size()) - 1))];
        if (auto* const scribble = dynamic_cast<Scribble*>(view))
            scribble->change(dice);
        switch (dice.upTo(4))
        {
        case 0:
            return view->setViewSize(dice.rect(-20, 130));
        case 1:
            return view->setVisible(!view->isVisible());
        default:
            return view->setDirty(true);
        }
    }

    std::vector<unsigned char> picture()
    {
        frame->idle();
        IOSBitmap& shown = *frame->getFrameBitmap();
        return {shown.getPixelPtr(), shown.getPixelPtr() + shown.getTotalBytes()};
    }

    Kept<CFrame> frame;

private:
    void fill(CViewContainer& container, int depth)
    {
        for (int i = 0; i < 4; ++i)
        {
            CView* added = nullptr;
            if (depth > 0 && dice.upTo(1) == 0)
            {
                auto* const inner = new CViewContainer(dice.rect(-20, 130 / (4 - depth)));
                inner->setBackgroundColor(dice.color(60));
                inner->setTransparency(dice.upTo(3) == 0);
                if (dice.upTo(3) == 0)
                    inner->setBackground(bitmap.get());
                fill(*inner, depth - 1);
                added = inner;
            }
            else
                added = new Scribble(dice.rect(-20, 130 / (4 - depth)), dice, *bitmap.get());
            container.addView(added);
            views.push_back(added);
        }
    }

    Dice dice;
    Kept<CBitmap> bitmap = Kept<CBitmap>::adopt(new CBitmap(nullptr, true));
    std::vector<CView*> views;
};
}

TEST(PartialPainting, LooksAsIfAllHadBeenPainted)
{
    for (unsigned seed = 1; seed <= 60; ++seed)
    {
        Tree tree(seed);
        for (int step = 0; step < 12; ++step)
        {
            tree.change();
            const auto inParts = tree.picture();
            tree.frame->setDirty(true);
            ASSERT_TRUE(inParts == tree.picture()) << "seed " << seed << ", step " << step;
        }
    }
}
