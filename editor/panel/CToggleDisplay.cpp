// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/panel/CToggleDisplay.h"

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/tree/CFrame.h"
#include "editor/panel/CToggleDisplayDial.h"
#include "editor/panel/CToggleDisplayOptionmenu.h"
#include "effect/parameters/DKS_Mini.h"

#include <algorithm>
#include <cstring>

namespace Tovra
{
namespace
{
constexpr int rows = 8;
constexpr long timerPeriod = 10;         // milliseconds
constexpr float waitBeforeClosing = 350; // milliseconds
constexpr float slideSpeed = 0.0125f;    // a millisecond
constexpr CColor panelColor{30, 31, 46, 190};

constexpr struct
{
    int id;
    const char* label;
} dials[] = {{DKS_Mini::kTimeOffset, "Offset"},      {DKS_Mini::kStrength, "Strength"},
             {DKS_Mini::kAttackTime, "Atk. Time"},   {DKS_Mini::kAttackCurve, "Atk. Curve"},
             {DKS_Mini::kHoldTime, "Hold Time"},     {DKS_Mini::kReleaseTime, "Rls. Time"},
             {DKS_Mini::kReleaseCurve, "Rls. Curve"}};
}

CToggleDisplay::CToggleDisplay(const CRect& rect, const CPoint& closed, const CPoint& opened,
                               const Orbel::CPropertyManager& manager, CControlListener* listener,
                               CBitmap* picture)
    : CViewContainer(rect, picture), closedPosition(closed), openPosition(opened)
{
    constexpr double left = 19.0, right = 5.0, top = 7.0;
    setTransparency(true);
    const double height = rect.getHeight() / rows;
    timeMenu =
        new CToggleDisplayOptionmenu({left, top, rect.getWidth() - right, top + height - 4.0}, listener);
    addView(timeMenu);
    addDials(manager);
    moveTo(0.0f);
}

void CToggleDisplay::addDials(const Orbel::CPropertyManager& manager)
{
    const double height = size.getHeight() / rows;
    double top = height;
    for (const auto& each : dials)
    {
        const bool isCurve = each.id == DKS_Mini::kAttackCurve || each.id == DKS_Mini::kReleaseCurve;
        auto* const dial = new CToggleDisplayDial({0.0, top, size.getWidth(), top + height},
                                                  manager.getPropertyByID(each.id), each.label, isCurve);
        if (each.id == DKS_Mini::kReleaseTime)
            releaseDial = dial;
        addView(dial);
        top += height;
    }
}

bool CToggleDisplay::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CToggleDisplay") == 0) || CViewContainer::isTypeOf(name);
}

void CToggleDisplay::setTimeAdjust(int index, float beats)
{
    timeMenu->setTimeAdjust(index, beats);
}

// Sliding

void CToggleDisplay::moveTo(float share)
{
    slide = share;
    const double left = closedPosition.x + (openPosition.x - closedPosition.x) * double(share);
    const CRect place(left, closedPosition.y, left + size.getWidth(), closedPosition.y + size.getHeight());
    setMouseableArea(place);
    setViewSize(place);
}

void CToggleDisplay::onTimer(int milliseconds)
{
    const float step = float(milliseconds) * slideSpeed;
    float next = slide;
    if (!closing)
        next += step;
    else if (holdTime > waitBeforeClosing)
        next -= step;
    else
        holdTime += float(milliseconds);
    next = std::clamp(next, 0.0f, 1.0f);
    if (next != slide)
        moveTo(next);
    if (slide == (closing ? 0.0f : 1.0f))
        RemoveTimerObject(this);
}

void CToggleDisplay::shut()
{
    closing = true;
    RemoveTimerObject(this);
    if (slide != 0.0f)
        moveTo(0.0f);
}

void CToggleDisplay::beginClosing()
{
    if (closing)
        return;
    closing = true;
    if (slide == 1.0f)
        holdTime = 0.0f;
    RegisterTimerObject(this, timerPeriod, false);
}

MouseEventResult CToggleDisplay::onMouseEntered(CPoint& where, const long& buttons)
{
    if (buttons == 0 && closing)
    {
        closing = false;
        RegisterTimerObject(this, timerPeriod, false);
    }
    CViewContainer::onMouseEntered(where, buttons);
    return kMouseHandled;
}

MouseEventResult CToggleDisplay::onMouseExited(CPoint& where, const long& buttons)
{
    if ((buttons & ~kAllModifiers) == 0)
        beginClosing();
    CViewContainer::onMouseExited(where, buttons);
    return kMouseHandled;
}

// Its empty ground is nobody else's.
MouseEventResult CToggleDisplay::onMouseDown(CPoint& where, const long& buttons)
{
    const MouseEventResult result = CViewContainer::onMouseDown(where, buttons);
    return result == kMouseUnhandled || result == kMouseUnimplemented ? kMouseHandled : result;
}

// A drag that ends outside.
MouseEventResult CToggleDisplay::onMouseUp(CPoint& where, const long& buttons)
{
    const Kept<CToggleDisplay> self(this);
    const CPoint place = where;
    const MouseEventResult result = CViewContainer::onMouseUp(where, buttons);
    if (!isWithinEdges(size, place))
        beginClosing();
    return result;
}

// The picture

void CToggleDisplay::coverDirt()
{
    CFrame* const root = getFrame();
    if (root == nullptr || !isVisible())
        return;
    CRect all = size;
    root->localRectToFrameRect(this, all);
    for (int i = 0; i < root->getDirtyRects().size(); ++i)
    {
        const CRect part = root->getDirtyRects()[i];
        const bool meets =
            part.left < all.right && all.left < part.right && part.top < all.bottom && all.top < part.bottom;
        if (meets && !(part == all))
            return root->addDirtyRect(all, this); // last, after all parts of it
    }
}

// Over a part of it that is drawn alone there is no blur: all of it comes next.
void CToggleDisplay::drawRect(CDrawContext* context, const CRect& update)
{
    constexpr int radius = 7;
    CRect seen = size;
    seen.bound(getParentView() != nullptr ? CRect(0.0, 0.0, getParentView()->getViewSize().getWidth(),
                                                  getParentView()->getViewSize().getHeight())
                                          : size);
    const bool isWhole = update.left <= seen.left && update.top <= seen.top && update.right >= seen.right &&
                         update.bottom >= seen.bottom;
    if (isWhole)
        context->blurRect(seen, radius, radius);
    CViewContainer::drawRect(context, update);
}

void CToggleDisplay::drawBackgroundRect(CDrawContext* context, CRect& update)
{
    if (getBackground() != nullptr)
        return CViewContainer::drawBackgroundRect(context, update);
    const CRect all(0.0, 0.0, size.getWidth(), size.getHeight());
    context->setFillColor(panelColor);
    context->drawRect(all, kFilled);
    context->setLineWidth(1.0);
    context->setFrameColor(kDisplayColor3);
    context->line(0.5, 0.0, 0.5, size.getHeight());
}
}
