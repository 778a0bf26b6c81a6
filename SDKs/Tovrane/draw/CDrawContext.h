// What a view draws on: coordinates of its own, a clip, colours and a font, on top of a renderer.
//
// The containers move the offset, so that each view draws in its parent's coordinates, and set the clip. A
// frame's context draws on the frame's target; one that is made without a target has a small picture of its
// own until it is given a better one. Without a renderer nothing happens. [window thread], but for contexts
// of bitmaps, which one thread at a time may use.
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

// What is drawn on. Neither the renderer nor its picture is owned.
struct CDrawTarget
{
    PelmoAGG* renderer = nullptr;
    IOSBitmap* bitmap = nullptr;
    CRect size{0.0, 0.0, 1000.0, 1000.0}; // the clip that resetClipRect restores
};

class CDrawContext : public CBaseObject
{
public:
    CDrawContext() : CDrawContext(CDrawTarget(), nullptr) {}
    // systemContext is where blit shows the picture; it may be null.
    CDrawContext(const CDrawTarget& target, void* systemContext);
    ~CDrawContext() override;
    CDrawContext(const CDrawContext&) = delete;
    CDrawContext& operator=(const CDrawContext&) = delete;

    void forget() override;

    // Where the frame lies, and what is added to every coordinate. A container moves both.
    CPoint getFrameOffset() const { return frameOffset; }
    void setFrameOffset(const CPoint& offset) { frameOffset = offset; }
    CPoint getOffset() const { return drawOffset; }
    void setOffset(const CPoint& offset) { drawOffset = offset; }

    // The clip in the coordinates that are drawn in.
    CRect getClipRect() const;
    void setClipRect(const CRect& clip);
    // The target's size is kept as the clip as it stands; the renderer gets it moved by the offset.
    void resetClipRect();

    // The pen goes to the point; lineTo draws on its way.
    void moveTo(const CPoint& point);
    void lineTo(const CPoint& point);
    void line(double x1, double y1, double x2, double y2);

    // Shapes put the context's colours into the renderer as far as the style uses them, so a gradient that
    // was set there is gone: gradients are filled through CDrawPath or the renderer. A style beyond the
    // three draws with whatever colours the renderer holds.
    void drawRect(const CRect& rect, CDrawStyle style);
    void drawRoundRect(const CRect& rect, float radius, CDrawStyle style);
    void drawEllipse(const CRect& rect, CDrawStyle style);
    // Part of the ellipse in the rectangle; degrees, clockwise from the right.
    void drawArc(const CRect& rect, float start, float sweep, CDrawStyle style);
    // Both radii in pixels.
    void blurRect(CRect& rect, int radiusX, int radiusY);

    void setLineWidth(double width);
    double getLineWidth() const { return lineWidth; }
    void setFillColor(CColor color);
    CColor getFillColor() const { return fillColor; }
    void setFrameColor(CColor color);
    CColor getFrameColor() const { return frameColor; }
    void setFontColor(CColor color) { fontColor = color; }
    CColor getFontColor() const { return fontColor; }

    // The font is not counted and gets the style, and the size unless that is 0, which means the font's own.
    // A font without data leaves the renderer's former font.
    void setFont(CFontDesc* newFont, const double& size, const long& style);
    CFontDesc* getFont() const { return font; }
    double getFontSize() const { return fontSize; }
    // In pixels.
    double getStringWidth(const char* text);
    // One line, in the vertical middle of the rectangle and clipped to it without its last row. Without
    // useFontColor the renderer's line colour stays.
    void drawString(const char* text, const CRect& rect, bool useFontColor = true,
                    CHoriTxtAlign align = kTextCenter);

    // Shows the picture on target (an IBlitTarget*), or on the system context for null.
    void blit(void* target);

    // A renderer that belongs to somebody else, in place of the one so far, which is deleted if it was the
    // context's own. The clip and the font are told to it.
    void setAGGRenderer(PelmoAGG* newRenderer);
    PelmoAGG* getAGGRenderer() const { return renderer; }
    // Not owned; goes with setAGGRenderer.
    void setTargetBitmap(IOSBitmap* bitmap);
    IOSBitmap* getTargetBitmap() const { return targetBitmap; }

private:
    CRect moved(const CRect& rect) const;
    void applyStyle(CDrawStyle style);
    void applyFont();
    void createPrivateRenderer();

    CPoint frameOffset;
    CPoint drawOffset;
    void* systemContext;
    CRect wholeSize; // of the target
    CFontDesc* font = nullptr;
    CColor fontColor;
    CPoint pen;
    double lineWidth = 1.0;
    CColor frameColor;
    CColor fillColor;
    CRect clip; // with the offset
    PelmoAGG* renderer = nullptr;
    IOSBitmap* targetBitmap = nullptr;
    double fontSize = 0.0;
    std::unique_ptr<IOSBitmap> privateBitmap; // null where these two are somebody else's
    std::unique_ptr<PelmoAGG> privateRenderer;
};
}
