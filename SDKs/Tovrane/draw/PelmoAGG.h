// The renderer: draws shapes, gradients, pictures and text into one 32-bit picture in memory.
//
// A frame has one for its picture, which all its views share through a CDrawContext; a bitmap has one of its
// own. It is a state machine: colours, line width, clip and font stay as they were set until the next call
// or the next attach. One thread at a time, in a frame the window thread under the frame's draw lock.
//
// The pixels are blue, green, red, alpha. Shapes and text blend colours as they are; pictures are
// premultiplied. The master alpha counts when a colour or a gradient is set, not when something is drawn, so
// it comes first.
//
// Coordinates that are no numbers draw nothing. Those far outside of the picture are pulled in to where the
// 24.8 fixed point of the rasteriser can hold them.
#pragma once

#include "Tovrane/draw/FontCacheType.h"

#include <agg_color_rgba.h>
#include <memory>

namespace Tovra
{
// How a colour meets the pixel below it. The first 28 are the compositing operators by their usual names;
// the last one is plain mixing by alpha.
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
    kFontHints, // the font's own
    kAutoHints
};

// By the name of the interpolation.
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
    // Somebody else's pixels: rows of width pixels, stride bytes apart. A negative stride marks a bottom-up
    // picture, whose last row in memory is row 0.
    class Image
    {
    public:
        Image() = default;
        Image(unsigned char* pixels, unsigned int width, unsigned int height, int stride)
        {
            attach(pixels, width, height, stride);
        }

        // Refused, and left without pixels: null, no size, more than maxSide a side, or rows that overlap.
        void attach(unsigned char* pixels, unsigned int width, unsigned int height, int stride);

        // The start of memory, as attached; null without a picture.
        unsigned char* getPixels() const { return memory; }
        unsigned int getWidth() const { return columns; }
        unsigned int getHeight() const { return rows; }
        int getStride() const { return rowStride; }
        // 0 <= y < getHeight().
        unsigned char* row(int y) const { return firstRow + static_cast<long>(y) * rowStride; }

    private:
        unsigned char* memory = nullptr;
        unsigned char* firstRow = nullptr;
        unsigned int columns = 0;
        unsigned int rows = 0;
        int rowStride = 0;
    };

    // The longest side of a picture.
    static constexpr unsigned int maxSide = 8192;

    PelmoAGG();
    ~PelmoAGG();
    PelmoAGG(const PelmoAGG&) = delete;
    PelmoAGG& operator=(const PelmoAGG&) = delete;

    // The picture to draw into, which stays its owner's; null or a size of 0 means none, and nothing is
    // drawn. Clip: the whole picture; line width 1; lines black, filling white; text on its base line from
    // the left; bilinear pictures; plain blending, master alpha 1. The font stays.
    void attach(unsigned char* pixels, unsigned int width, unsigned int height, int stride);
    void attach(Image& image);

    // Nothing is drawn outside of it, but by clearAll and blurRect. Pixels from x1 to x2, both included, are
    // open to pictures and text; shapes end at x2 itself. A box without an inner part, outside of the
    // picture, or with a coordinate that is no number closes everything.
    void clipBox(double x1, double y1, double x2, double y2);
    // As it was set.
    void clipBox(double& x1, double& y1, double& x2, double& y2) const;
    // Every pixel, without blending. The master alpha counts.
    void clearAll(unsigned int r, unsigned int g, unsigned int b, unsigned int a);
    // To the centre of the pixel that holds the point: lines of one pixel stay crisp.
    void alignPoint(double& x, double& y) const;

    // 0 to 1. Colours and gradients that are set already stay as they are.
    void masterAlpha(double alpha);
    double masterAlpha() const;
    void blendMode(BlendMode mode);
    BlendMode blendMode() const;
    // Kept for callers; kBlendDst, the default, is the only one in use, and leaves pictures as they are.
    void imageBlendMode(BlendMode mode);
    BlendMode imageBlendMode() const;
    // What lies around a picture that is transformed.
    void imageBlendColor(const agg::rgba8& color);
    void imageBlendColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a = 255);
    agg::rgba8 imageBlendColor() const;
    // Whether pictures that are made smaller take all of their pixels into account.
    void imageResample(bool always);
    bool imageResample() const;
    void imageFilter(ImageFilter filter);
    ImageFilter imageFilter() const;

    // From here on one colour, without a gradient; its alpha is multiplied by the master alpha.
    void fillColor(const agg::rgba8& color);
    void fillColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a = 255);
    void noFill();
    agg::rgba8 fillColor() const;
    void lineColor(const agg::rgba8& color);
    void lineColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a = 255);
    void noLine();
    agg::rgba8 lineColor() const;
    // All colours as they are, to be put back as they were whatever the master alpha is.
    struct Colors
    {
        agg::rgba8 fill;
        agg::rgba8 line;
        bool fillIsGradient;
    };
    Colors colors() const;
    void colors(const Colors& saved);
    // In pixels; 0 and below draw no lines.
    void lineWidth(double width);
    double lineWidth() const;

    // Fills with c1 up to the first point, and from there towards c2 at the second. A profile of 1 spreads
    // the change over the whole distance, a smaller one over the middle of it. Beyond the change stays its
    // last step, which is short of c2, the more so the fewer steps there are: a profile of 0 has one, and
    // that is c1.
    void fillLinearGradient(double x1, double y1, double x2, double y2, agg::rgba8 c1, agg::rgba8 c2,
                            double profile);
    // c2 half-way. The master alpha counts twice for c1, not at all for c2, and once for c3: looks that are
    // in use depend on it.
    void fillLinearGradient(double x1, double y1, double x2, double y2, agg::rgba8 c1, agg::rgba8 c2,
                            agg::rgba8 c3);
    // The 256 colours from the first point to the second, of the gradient that was set last.
    const agg::rgba8* fillGradientTable() const;

    // Shapes are filled and then stroked, a line is stroked. Angles are in radians, clockwise from the right.
    void line(double x1, double y1, double x2, double y2);
    void rectangle(double x1, double y1, double x2, double y2);
    void roundedRect(double x1, double y1, double x2, double y2, double radius);
    void ellipse(double cx, double cy, double rx, double ry);
    void arc(double cx, double cy, double rx, double ry, double start, double sweep);

    // The free path. A point that is no number is left out.
    void resetPath();
    void moveTo(double x, double y);
    void lineTo(double x, double y);
    void closePolygon();
    void drawPath(DrawPathFlag flag);

    // A TrueType file in memory, which has to outlive the renderer, under a name that stands for it; height
    // is in pixels, angle in radians. A file that is no font leaves text undrawn.
    void font(const char* name, const char* data, long length, double height, FontCacheType type,
              double angle);
    void textAlignment(TextAlignment x, TextAlignment y);
    // None at first: letters keep their own widths at every size, so texts are evenly spaced.
    void textHints(TextHintsType hints);
    TextHintsType textHints() const;
    // In pixels; 0 without a font. Texts are UTF-8; a byte that is none stands for itself.
    double textWidth(const char* string);
    // In the line colour, at the point by the alignment. With roundOff the start is cut to whole pixels;
    // ddx and ddy are added after that.
    void text(double x, double y, const char* string, bool roundOff, double ddx, double ddy);

    // A premultiplied picture, or the part of it from (imgX1, imgY1) to (imgX2, imgY2), both included, to the
    // point. All coordinates are cut to whole pixels. alpha is 0 to 255. Image and picture may overlap.
    void blendImage(const Image& image, double imgX1, double imgY1, double imgX2, double imgY2, double dstX,
                    double dstY, unsigned int alpha);
    void blendImage(const Image& image, double dstX, double dstY, unsigned int alpha);
    // Scales a part of a premultiplied picture, by the image filter.
    void transformImage(const Image& image, int imgX1, int imgY1, int imgX2, int imgY2, double dstX1,
                        double dstY1, double dstX2, double dstY2);
    // In place, whatever the clip is. Radii are in pixels, rounded, at most 254; 0 leaves an axis alone.
    void blurRect(double x1, double y1, double x2, double y2, double radiusX, double radiusY);

    struct Pipelines; // for the renderer's own files

private:
    friend class PelmoText;

    std::unique_ptr<Pipelines> pipelines;
};
}
