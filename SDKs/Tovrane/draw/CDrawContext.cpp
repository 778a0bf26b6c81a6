// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CDrawContext.h"

#include "Tovrane/draw/AggColor.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <cmath>

namespace Tovra
{
constexpr double radiansOfDegree = 0.017453292519943295;

CDrawContext::CDrawContext(const CDrawTarget& target, void* toSystemContext)
    : systemContext(toSystemContext),
      wholeSize(target.size),
      renderer(target.renderer),
      targetBitmap(target.bitmap)
{
    if (!renderer)
        createPrivateRenderer();

    resetClipRect();
    setFrameColor(kWhiteCColor);
    setLineWidth(1.0);
    setFillColor(kBlackCColor);
    setFontColor(kWhiteCColor);
    setFont(&gNormalFont, 0.0, 0);
}

CDrawContext::~CDrawContext() = default;

void CDrawContext::forget()
{
    CBaseObject::forget();
}

// As large as the clip, which is still empty, and so of one pixel.
void CDrawContext::createPrivateRenderer()
{
    privateBitmap = std::make_unique<CMACBitmap>();
    privateBitmap->setSize(unsigned(clip.getWidth()), unsigned(clip.getHeight()));
    targetBitmap = privateBitmap.get();
    privateRenderer = std::make_unique<PelmoAGG>();
    renderer = privateRenderer.get();
    renderer->attach(targetBitmap->getPixelPtr(), targetBitmap->getWidth(), targetBitmap->getHeight(),
                     targetBitmap->getRowBytes());
}

void CDrawContext::setAGGRenderer(PelmoAGG* newRenderer)
{
    if (targetBitmap == privateBitmap.get())
        targetBitmap = nullptr;
    renderer = newRenderer;
    privateRenderer.reset();
    privateBitmap.reset();
    if (!renderer)
        return;
    applyClip();
    applyFont();
}

void CDrawContext::setTargetBitmap(IOSBitmap* bitmap)
{
    targetBitmap = bitmap;
}

double CDrawContext::getScale() const
{
    return renderer ? renderer->scale() : 1.0;
}

CRect CDrawContext::moved(const CRect& rect) const
{
    CRect result = rect;
    return result.offset(drawOffset);
}

void CDrawContext::moveTo(const CPoint& point)
{
    pen = point + drawOffset;
}

void CDrawContext::lineTo(const CPoint& point)
{
    const CPoint end = point + drawOffset;
    if (renderer)
        renderer->line(pen.x, pen.y, end.x, end.y);
    pen = end;
}

void CDrawContext::line(double x1, double y1, double x2, double y2)
{
    if (renderer)
        renderer->line(x1 + drawOffset.x, y1 + drawOffset.y, x2 + drawOffset.x, y2 + drawOffset.y);
}

void CDrawContext::applyStyle(CDrawStyle style)
{
    switch (style)
    {
    case kStroked:
        renderer->noFill();
        renderer->lineColor(aggColorFromCColor(frameColor));
        break;
    case kFilled:
        renderer->noLine();
        renderer->fillColor(aggColorFromCColor(fillColor));
        break;
    case kFilledAndStroked:
        renderer->fillColor(aggColorFromCColor(fillColor));
        renderer->lineColor(aggColorFromCColor(frameColor));
        break;
    }
}

void CDrawContext::drawRect(const CRect& rect, CDrawStyle style)
{
    if (!renderer)
        return;
    applyStyle(style);
    const CRect at = moved(rect);
    renderer->rectangle(at.left, at.top, at.right, at.bottom);
}

void CDrawContext::drawRoundRect(const CRect& rect, float radius, CDrawStyle style)
{
    if (!renderer)
        return;
    applyStyle(style);
    const CRect at = moved(rect);
    renderer->roundedRect(at.left, at.top, at.right, at.bottom, radius);
}

void CDrawContext::drawEllipse(const CRect& rect, CDrawStyle style)
{
    if (!renderer)
        return;
    applyStyle(style);
    const CRect at = moved(rect);
    const CPoint middle = at.center();
    renderer->ellipse(middle.x, middle.y, at.getWidth() * 0.5, at.getHeight() * 0.5);
}

void CDrawContext::drawArc(const CRect& rect, float start, float sweep, CDrawStyle style)
{
    if (!renderer)
        return;
    applyStyle(style);
    const CRect at = moved(rect);
    const CPoint middle = at.center();
    renderer->arc(middle.x, middle.y, at.getWidth() * 0.5, at.getHeight() * 0.5, start * radiansOfDegree,
                  sweep * radiansOfDegree);
}

void CDrawContext::blurRect(CRect& rect, int radiusX, int radiusY)
{
    if (!renderer)
        return;
    CRect at = moved(rect);
    renderer->alignPoint(at.left, at.top);
    renderer->alignPoint(at.right, at.bottom);
    renderer->blurRect(at.left, at.top, at.right, at.bottom, radiusX, radiusY);
}

void CDrawContext::setLineWidth(double width)
{
    lineWidth = width;
    if (renderer)
        renderer->lineWidth(width);
}

void CDrawContext::setFillColor(CColor color)
{
    if (!renderer)
        return;
    fillColor = color;
    renderer->fillColor(aggColorFromCColor(color));
}

void CDrawContext::setFrameColor(CColor color)
{
    if (!renderer)
        return;
    frameColor = color;
    renderer->lineColor(aggColorFromCColor(color));
}

void CDrawContext::setFont(CFontDesc* newFont, const double& size, const long& style)
{
    font = newFont;
    if (!font)
        return;
    font->setStyle(style);
    if (size != 0.0 && !std::isnan(size))
        font->setSize(size);
    fontSize = font->getSize();
    applyFont();
}

void CDrawContext::applyFont()
{
    const char* data = nullptr;
    long length = 0;
    if (renderer && font && font->getFont(data, length))
        renderer->font(font->getName(), data, length, fontSize, font->getCacheType(), 0.0);
}

double CDrawContext::getStringWidth(const char* text)
{
    return renderer ? renderer->textWidth(text) : 0.0;
}

// Sets the renderer's alignment and answers the x that it refers to.
static double alignText(PelmoAGG& renderer, const CRect& rect, CHoriTxtAlign align)
{
    switch (align)
    {
    case kTextCenter:
        renderer.textAlignment(kAlignCenter, kAlignCenter);
        return rect.center().x;
    case kTextRight:
        renderer.textAlignment(kAlignRightOrTop, kAlignCenter);
        return rect.right;
    default:
        renderer.textAlignment(kAlignLeftOrBottom, kAlignCenter);
        return rect.left;
    }
}

void CDrawContext::drawString(const char* text, const CRect& rect, bool useFontColor, CHoriTxtAlign align)
{
    if (!text || !renderer)
        return;
    CRect textClip = rect;
    textClip.bound(getWholeClipRect());
    textClip.bottom -= 1.0 / getScale();
    if (textClip.isEmpty())
        return;
    const CRect box = moved(textClip);
    renderer->clipBox(box.left, box.top, box.right, box.bottom);
    const CPoint start = CPoint(alignText(*renderer, rect, align), rect.center().y) + drawOffset;
    const PelmoAGG::Colors saved = renderer->colors();
    if (useFontColor)
    {
        renderer->lineColor(aggColorFromCColor(fontColor));
        renderer->fillColor(aggColorFromCColor(fontColor));
    }
    renderer->text(start.x, start.y, text, false, 0.0, 0.0);
    renderer->colors(saved);
    renderer->clipBox(clip.left, clip.top, clip.right, clip.bottom);
}

void CDrawContext::blit(void* target)
{
    if (targetBitmap)
        targetBitmap->drawToContext(target ? target : systemContext, nullptr, nullptr);
}
}
