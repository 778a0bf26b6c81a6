// SPDX-License-Identifier: GPL-3.0-or-later
// The surface that views draw on: an offset, a clip, colours and a font, on top of a renderer.
//
// Containers change the offset, so that each view draws in its parent's coordinates, and set the clip. What
// is drawn goes to a target: a renderer and its picture. A context without a target has a tiny picture of its
// own until setAGGRenderer. Without a renderer nothing is drawn. [window thread], except that a bitmap's
// context may be used by any one thread at a time.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/CColor.h"

#include <memory>

namespace Tovra
{
class CFontDesc;
class IOSBitmap;
class PelmoAGG;

enum CDrawStyle
{
    kStroked = 0,
    kFilled = 1,
    kFilledAndStroked = 2
};

enum CHoriTxtAlign
{
    kTextLeft = 0,
    kTextCenter = 1,
    kTextRight = 2
};

// Where a context draws to. Whoever makes the context keeps ownership of both objects and has them outlive
// it.
struct CDrawTarget
{
    PelmoAGG* renderer = nullptr;
    IOSBitmap* bitmap = nullptr;
    CRect size{0.0, 0.0, 1000.0, 1000.0}; // the first clip, which resetClipRect restores
};

class CDrawContext : public CBaseObject
{
public:
    CDrawContext() : CDrawContext(CDrawTarget(), nullptr) {}
    // systemContext is the IBlitTarget* that blit shows the picture on; it may be null.
    CDrawContext(const CDrawTarget& target, void* systemContext);
    ~CDrawContext() override;
    CDrawContext(const CDrawContext&) = delete;
    CDrawContext& operator=(const CDrawContext&) = delete;

    void forget() override;

    // Pixels to a unit, as the renderer has it; 1 without a renderer. All coordinates here are in units.
    double getScale() const;

    // The frame offset is the sum of the containers' positions; the offset is added to every coordinate.
    // Containers change both.
    CPoint getFrameOffset() const { return frameOffset; }
    void setFrameOffset(const CPoint& offset) { frameOffset = offset; }
    CPoint getOffset() const { return drawOffset; }
    void setOffset(const CPoint& offset) { drawOffset = offset; }

    // The part of the clip inside the limit (see below), without the offset. An edge that setClipRect gets
    // back as getClipRect returned it does not become an edge of the clip if it is one of the limit.
    CRect getClipRect() const;
    void setClipRect(const CRect& clip);
    // Makes the target's size the clip, without a limit. The offset is added for the renderer, but not for
    // getClipRect.
    void resetClipRect();

    // Painting a part of a picture. What a view draws is shaped by the clip, which does not depend on the
    // part, and reaches only the pixels inside the limit. So a part looks as it does when all is painted.
    //
    // enterView reduces the clip to a view's rectangle, and the limit to the pixels that this touches;
    // limitTo reduces only the limit, to the pixels that the part touches. Frames and containers restore
    // afterwards what they saved.
    struct ClipState
    {
        CRect clip, viewClip, limit;
    };
    ClipState saveClip() const;
    void restoreClip(const ClipState& saved);
    void enterView(const CRect& rect);
    void limitTo(const CRect& part);
    // For drawing that depends on the edges of the clip: the clip whatever the limit is, and a rectangle with
    // the edges of the whole clip in place of those that come from the limit.
    CRect getWholeClipRect() const;
    void setWholeClipRect(const CRect& clip);
    CRect withoutLimit(const CRect& rect) const;

    // Move the pen; lineTo draws a line on the way.
    void moveTo(const CPoint& point);
    void lineTo(const CPoint& point);
    void line(double x1, double y1, double x2, double y2);

    // Shapes set the renderer's colours to those of the context that the style uses. This ends a gradient
    // that was set there: to fill with a gradient, use CDrawPath or the renderer. Any other value of style
    // draws with the colours that the renderer has.
    void drawRect(const CRect& rect, CDrawStyle style);
    void drawRoundRect(const CRect& rect, float radius, CDrawStyle style);
    void drawEllipse(const CRect& rect, CDrawStyle style);
    // A part of the ellipse in rect; in degrees, clockwise from the right.
    void drawArc(const CRect& rect, float start, float sweep, CDrawStyle style);
    void blurRect(CRect& rect, int radiusX, int radiusY);

    void setLineWidth(double width);
    double getLineWidth() const { return lineWidth; }
    void setFillColor(CColor color);
    CColor getFillColor() const { return fillColor; }
    void setFrameColor(CColor color);
    CColor getFrameColor() const { return frameColor; }
    void setFontColor(CColor color) { fontColor = color; }
    CColor getFontColor() const { return fontColor; }

    // Sets the font's style, and its size unless size is 0, which stands for the size that it has. The caller
    // keeps ownership of the font. If it has no data, the renderer keeps its former font.
    void setFont(CFontDesc* newFont, const double& size, const long& style);
    CFontDesc* getFont() const { return font; }
    double getFontSize() const { return fontSize; }
    // With the renderer's font.
    double getStringWidth(const char* text);
    // Draws one line of UTF-8 at the vertical centre of rect, clipped to rect without its last row of pixels.
    // In the font colour, or, without useFontColor, in the renderer's line colour.
    void drawString(const char* text, const CRect& rect, bool useFontColor = true,
                    CHoriTxtAlign align = kTextCenter);

    // Shows the target's picture on target (an IBlitTarget*), or, if that is null, on the system context.
    void blit(void* target);

    // Replaces the renderer and passes the clip and the font on to the new one. The caller keeps ownership.
    void setAGGRenderer(PelmoAGG* newRenderer);
    PelmoAGG* getAGGRenderer() const { return renderer; }
    // To be called along with setAGGRenderer. The caller keeps ownership.
    void setTargetBitmap(IOSBitmap* bitmap);
    IOSBitmap* getTargetBitmap() const { return targetBitmap; }

private:
    CRect moved(const CRect& rect) const;
    CRect limitInUnits() const;
    void applyClip();
    void applyStyle(CDrawStyle style);
    void applyFont();
    void createPrivateRenderer();

    CPoint frameOffset;
    CPoint drawOffset;
    void* systemContext;
    CRect wholeSize; // the size of the target
    CFontDesc* font = nullptr;
    CColor fontColor;
    CPoint pen;
    double lineWidth = 1.0;
    CColor frameColor;
    CColor fillColor;
    static constexpr CRect unlimited{-1e9, -1e9, 1e9, 1e9};
    CRect clip;              // these two include the offset
    CRect viewClip;          // the clip at the last enterView or resetClipRect
    CRect limit = unlimited; // in pixels, and whole ones
    PelmoAGG* renderer = nullptr;
    IOSBitmap* targetBitmap = nullptr;
    double fontSize = 0.0;
    std::unique_ptr<IOSBitmap> privateBitmap; // these two are null while there is a target
    std::unique_ptr<PelmoAGG> privateRenderer;
};
}
