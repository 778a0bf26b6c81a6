// SPDX-License-Identifier: GPL-3.0-or-later
// The renderer: draws shapes, gradients, pictures and text into one 32-bit picture in memory.
//
// A frame has one for its picture, which all its views use through a CDrawContext; a bitmap has one of its
// own. It is a state machine: colours, line width, clip and font keep their values until the next call that
// sets them, or the next attach. One thread at a time; in a frame that is the window thread, under the
// frame's draw lock.
//
// The pixels are blue, green, red, alpha. Shapes and text blend colours that are not premultiplied; pictures
// are premultiplied. The master alpha takes effect when a colour or a gradient is set, not when something is
// drawn, so it has to be set before them.
//
// All coordinates and lengths are in units, of which one is scale() pixels; only scissor takes pixels. What
// is upright or level stays on whole pixels at every scale.
//
// A call with a NaN coordinate draws nothing. Coordinates far outside of the picture are clamped to what the
// 24.8 fixed point numbers of the rasteriser can hold.
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/FontCacheType.h"
#include "Tovrane/draw/SubpixelOrder.h"

#include <agg_color_rgba.h>
#include <memory>

namespace Tovra
{
// How colours are blended with the picture: 28 compositing operators by their usual names, and, at last,
// plain mixing by alpha.
enum BlendMode
{
    kBlendClear,
    kBlendSrc,
    kBlendDst,
    kBlendSrcOver,
    kBlendDstOver,
    kBlendSrcIn,
    kBlendDstIn,
    kBlendSrcOut,
    kBlendDstOut,
    kBlendSrcAtop,
    kBlendDstAtop,
    kBlendXor,
    kBlendPlus,
    kBlendMinus,
    kBlendMultiply,
    kBlendScreen,
    kBlendOverlay,
    kBlendDarken,
    kBlendLighten,
    kBlendColorDodge,
    kBlendColorBurn,
    kBlendHardLight,
    kBlendSoftLight,
    kBlendDifference,
    kBlendExclusion,
    kBlendContrast,
    kBlendInvert,
    kBlendInvertRgb,
    kBlendAlpha
};

enum DrawPathFlag
{
    kFillOnly,
    kStrokeOnly,
    kFillAndStroke,
    kFillWithLineColor
};

enum TextAlignment
{
    kAlignLeftOrBottom,
    kAlignRightOrTop,
    kAlignCenter
};

enum TextHintsType
{
    kNoHints,
    kFontHints, // by the font's own program, to whole pixels both ways
    kAutoHints  // by FreeType, and upwards alone: crisp lines, and the widths of kNoHints
};

// Named after the interpolation.
enum ImageFilter
{
    kFilterNone,
    kFilterBilinear,
    kFilterHanning,
    kFilterHermite,
    kFilterQuadric,
    kFilterBicubic,
    kFilterCatrom,
    kFilterSpline16,
    kFilterSpline36,
    kFilterBlackman
};

class PelmoAGG
{
public:
    // Refers to pixels that somebody else owns: rows of width pixels, stride bytes apart. A negative stride
    // stands for a bottom-up picture, whose last row in memory is row 0.
    class Image
    {
    public:
        Image() = default;
        Image(unsigned char* pixels, unsigned int width, unsigned int height, int stride,
              double pixelsPerUnit = 1.0)
        {
            attach(pixels, width, height, stride, pixelsPerUnit);
        }

        // Leaves the image empty if pixels is null, a side is 0 or above maxSide, or the rows would overlap.
        // pixelsPerUnit is the scale for which the image was made.
        void attach(unsigned char* pixels, unsigned int width, unsigned int height, int stride,
                    double pixelsPerUnit = 1.0);

        // The address that was attached; null for an empty image.
        unsigned char* getPixels() const { return memory; }
        unsigned int getWidth() const { return columns; }
        unsigned int getHeight() const { return rows; }
        int getStride() const { return rowStride; }
        double getScale() const { return scale; }
        // 0 <= y < getHeight().
        unsigned char* row(int y) const { return firstRow + static_cast<long>(y) * rowStride; }

    private:
        unsigned char* memory = nullptr;
        unsigned char* firstRow = nullptr;
        unsigned int columns = 0;
        unsigned int rows = 0;
        int rowStride = 0;
        double scale = 1.0;
    };

    // The maximum width and height of a picture.
    static constexpr unsigned int maxSide = 8192;

    PelmoAGG();
    ~PelmoAGG();
    PelmoAGG(const PelmoAGG&) = delete;
    PelmoAGG& operator=(const PelmoAGG&) = delete;

    // The pixels to a unit, from 1/16 to 16; other numbers are ignored. 1 at first; attach does not change
    // it. The clip box is applied again, and the font is opened in the size of the new scale.
    void scale(double pixelsPerUnit);
    double scale() const;

    // Sets the picture to draw into, which the caller owns. Without one (null, or a size of 0) nothing is
    // drawn. Resets all else but scale, font, hints and sub-pixel order: the clip is the whole picture, lines
    // are black and 1 wide, shapes are filled white, text begins at its top left, pictures are scaled
    // bilinearly, blending is plain with a master alpha of 1.
    void attach(unsigned char* pixels, unsigned int width, unsigned int height, int stride);
    void attach(Image& image);
    // Whether that is the picture's first pixel in memory.
    bool drawsInto(const unsigned char* pixels) const;

    // Limits drawing, except for clearAll and blurRect. Pictures and text reach the pixels from x1 to x2,
    // both included; shapes end at the coordinate x2. With an empty box, one outside of the picture, or one
    // with a NaN, nothing is drawn.
    void clipBox(double x1, double y1, double x2, double y2);
    // Reads back what was set.
    void clipBox(double& x1, double& y1, double& x2, double& y2) const;
    // Limits drawing, except for clearAll and blurRect, to these pixels as well: from (left, top) up to
    // (right, bottom), which are outside. Inside it changes nothing, while a clip box cuts shapes, whose
    // slanted edges may then be rounded differently. attach removes it.
    void scissor(double left, double top, double right, double bottom);
    // Sets every pixel, without blending. The master alpha takes effect.
    void clearAll(unsigned int r, unsigned int g, unsigned int b, unsigned int a);
    // Moves the point to the centre of its pixel, for crisp lines of one pixel; at a fractional scale, of the
    // pixel at the edge that is nearest to it, as for shapes.
    void alignPoint(double& x, double& y) const;

    // 0 to 1. Does not change colours and gradients that are already set.
    void masterAlpha(double alpha);
    double masterAlpha() const;
    void blendMode(BlendMode mode);
    BlendMode blendMode() const;
    // Kept for callers; kBlendDst, the default and the only value in use, does not change pictures.
    void imageBlendMode(BlendMode mode);
    BlendMode imageBlendMode() const;
    // The colour around a transformed picture.
    void imageBlendColor(const agg::rgba8& color);
    void imageBlendColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a = 255);
    agg::rgba8 imageBlendColor() const;
    // Whether pictures are resampled from all of their pixels when they are made smaller.
    void imageResample(bool always);
    bool imageResample() const;
    void imageFilter(ImageFilter filter);
    ImageFilter imageFilter() const;

    // Sets a solid colour, in place of a gradient. Its alpha is multiplied by the master alpha.
    void fillColor(const agg::rgba8& color);
    void fillColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a = 255);
    void noFill();
    agg::rgba8 fillColor() const;
    void lineColor(const agg::rgba8& color);
    void lineColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a = 255);
    void noLine();
    agg::rgba8 lineColor() const;
    // The present colours, which can be restored unchanged whatever the master alpha is.
    struct Colors
    {
        agg::rgba8 fill;
        agg::rgba8 line;
        bool fillIsGradient;
    };
    Colors colors() const;
    void colors(const Colors& saved);
    // Lines of 0 or less are not drawn.
    void lineWidth(double width);
    double lineWidth() const;

    // Fills with c1 up to the first point, and then with a transition towards c2 at the second. With a
    // profile of 1 the transition takes the whole distance, with a smaller one only the middle of it. After
    // it, its last step goes on, which does not quite reach c2, the less so the fewer steps there are: a
    // profile of 0 has one step, and that is c1.
    void fillLinearGradient(double x1, double y1, double x2, double y2, agg::rgba8 c1, agg::rgba8 c2,
                            double profile);
    // With c2 half-way. The master alpha is applied twice to c1, not at all to c2, and once to c3; the
    // product's look depends on this.
    void fillLinearGradient(double x1, double y1, double x2, double y2, agg::rgba8 c1, agg::rgba8 c2,
                            agg::rgba8 c3);
    // The 256 colours from the first to the second point of the gradient that was set last.
    const agg::rgba8* fillGradientTable() const;

    // Shapes are filled and then stroked; a line is only stroked. Angles are in radians, clockwise from the
    // right.
    void line(double x1, double y1, double x2, double y2);
    void rectangle(double x1, double y1, double x2, double y2);
    void roundedRect(double x1, double y1, double x2, double y2, double radius);
    void ellipse(double cx, double cy, double rx, double ry);
    void arc(double cx, double cy, double rx, double ry, double start, double sweep);

    // A path of any shape. Points with a NaN are ignored.
    void resetPath();
    void moveTo(double x, double y);
    void lineTo(double x, double y);
    void closePolygon();
    void drawPath(DrawPathFlag flag);

    // Sets the font: a TrueType file in memory, which has to outlive the renderer, and a name that identifies
    // it; height is in units to an em, angle in radians. If the file is no font, the former font stays.
    void font(const char* name, const char* data, long length, double height, FontCacheType type,
              double angle);
    void textAlignment(TextAlignment x, TextAlignment y);
    // Without hints, the default, letters keep their proportions at every size, so that text is evenly
    // spaced.
    void textHints(TextHintsType hints);
    TextHintsType textHints() const;
    // For fonts of kFontCacheLCD: the screen's order, which the window system knows. kSubpixelRGB at first;
    // attach does not change it. From a scale of 1.5 on text is grey whatever the order is.
    void subpixelOrder(SubpixelOrder order);
    SubpixelOrder subpixelOrder() const;
    // In units; 0 without a font. Texts are UTF-8; an invalid byte stands for the character of its number.
    double textWidth(const char* string);
    // Draws in the line colour, aligned to the point. With roundOff the start is truncated to whole pixels;
    // ddx and ddy are added afterwards.
    void text(double x, double y, const char* string, bool roundOff, double ddx, double ddy);

    // Blends a premultiplied picture, or its part from (imgX1, imgY1) to (imgX2, imgY2), both included, with
    // its top left at (dstX, dstY). All coordinates are truncated to whole pixels (at other scales than 1
    // they go to the nearest). alpha is 0 to 255. An image that was made for another scale is
    // resampled each time; otherwise both pictures may share memory.
    void blendImage(const Image& image, double imgX1, double imgY1, double imgX2, double imgY2, double dstX,
                    double dstY, unsigned int alpha);
    void blendImage(const Image& image, double dstX, double dstY, unsigned int alpha);
    // Scales a part of a premultiplied picture, with the image filter. The part is in units of the image.
    void transformImage(const Image& image, int imgX1, int imgY1, int imgX2, int imgY2, double dstX1,
                        double dstY1, double dstX2, double dstY2);
    // Blurs in place and ignores the clip. Radii are rounded to whole pixels, at most 254; with 0 an axis is
    // not blurred.
    void blurRect(double x1, double y1, double x2, double y2, double radiusX, double radiusY);
    // Whether clearAll or blurRect, which no clip limits, have changed the picture since the last call of
    // this.
    bool takeUnclipped();

    struct Pipelines; // in PelmoAGGPipelines.h, for the implementation

private:
    friend class PelmoText;
    void blendResampled(const Image& image, const CRect& part, const CPoint& at, unsigned int alpha);

    std::unique_ptr<Pipelines> pipelines;
};
}
