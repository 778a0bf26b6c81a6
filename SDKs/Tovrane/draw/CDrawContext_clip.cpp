// SPDX-License-Identifier: GPL-3.0-or-later
// The clip of a context, and the limit under which a part of a picture is painted.
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <cmath>

namespace Tovra
{
constexpr double roundingError = 1e-6; // of coordinates with an offset, and of those that were scaled

CRect CDrawContext::limitInUnits() const
{
    const double scale = getScale();
    return {limit.left / scale, limit.top / scale, limit.right / scale, limit.bottom / scale};
}

CDrawContext::ClipState CDrawContext::saveClip() const
{
    return {clip, viewClip, limit};
}

void CDrawContext::restoreClip(const ClipState& saved)
{
    clip = saved.clip;
    viewClip = saved.viewClip;
    limit = saved.limit;
    applyClip();
}

void CDrawContext::applyClip()
{
    if (!renderer)
        return;
    renderer->scissor(limit.left, limit.top, limit.right, limit.bottom);
    renderer->clipBox(clip.left, clip.top, clip.right, clip.bottom);
}

CRect CDrawContext::getClipRect() const
{
    CRect result = clip;
    return result.bound(limitInUnits()).offset(-drawOffset.x, -drawOffset.y);
}

CRect CDrawContext::getWholeClipRect() const
{
    CRect result = clip;
    return result.offset(-drawOffset.x, -drawOffset.y);
}

CRect CDrawContext::withoutLimit(const CRect& rect) const
{
    const auto isAt = [](double edge, double other) { return std::fabs(edge - other) < roundingError; };
    CRect visible = viewClip;
    visible.bound(limitInUnits());
    CRect whole = moved(rect);
    whole.left = isAt(whole.left, visible.left) ? viewClip.left : whole.left;
    whole.top = isAt(whole.top, visible.top) ? viewClip.top : whole.top;
    whole.right = isAt(whole.right, visible.right) ? viewClip.right : whole.right;
    whole.bottom = isAt(whole.bottom, visible.bottom) ? viewClip.bottom : whole.bottom;
    return whole.offset(-drawOffset.x, -drawOffset.y);
}

void CDrawContext::setClipRect(const CRect& newClip)
{
    setWholeClipRect(limit == unlimited ? newClip : withoutLimit(newClip));
}

void CDrawContext::setWholeClipRect(const CRect& newClip)
{
    clip = moved(newClip);
    applyClip();
}

void CDrawContext::resetClipRect()
{
    clip = viewClip = wholeSize;
    limit = unlimited;
    if (!renderer)
        return;
    const CRect box = moved(clip);
    renderer->scissor(limit.left, limit.top, limit.right, limit.bottom);
    renderer->clipBox(box.left, box.top, box.right, box.bottom);
}

void CDrawContext::enterView(const CRect& rect)
{
    clip.bound(moved(rect));
    viewClip = clip;
    limitTo(rect);
}

void CDrawContext::limitTo(const CRect& part)
{
    const double scale = getScale();
    CRect pixels = moved(part);
    pixels.left = std::floor(pixels.left * scale + roundingError);
    pixels.top = std::floor(pixels.top * scale + roundingError);
    pixels.right = std::ceil(pixels.right * scale - roundingError);
    pixels.bottom = std::ceil(pixels.bottom * scale - roundingError);
    limit.bound(pixels);
    applyClip();
}
}
