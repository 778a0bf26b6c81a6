// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CBitmap.h"

#include "CORE/Truncate.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/ImageResampling.h"
#include "Tovrane/draw/PNGStreams.h"

#include <cmath>
#include <csetjmp>
#include <png.h>

namespace Tovra
{
namespace
{
// Takes the last row and column of pixels off the context's clip during its lifetime.
class ShrunkenClip
{
public:
    explicit ShrunkenClip(CDrawContext& clipped)
        : context(clipped), saved(clipped.saveClip()), clip(clipped.getWholeClipRect())
    {
        const double pixel = 1.0 / context.getScale();
        clip.right -= pixel;
        clip.bottom -= pixel;
        if (!clip.isEmpty())
            context.setWholeClipRect(clip);
    }

    ~ShrunkenClip()
    {
        if (!clip.isEmpty())
            context.restoreClip(saved);
    }

    ShrunkenClip(const ShrunkenClip&) = delete;
    ShrunkenClip& operator=(const ShrunkenClip&) = delete;

    bool isEmpty() const { return clip.isEmpty(); }

private:
    CDrawContext& context;
    const CDrawContext::ClipState saved;
    CRect clip;
};

void jumpOut(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void stayQuiet(png_structp, png_const_charp) {}

// Asks for 8 bits each of blue, green, red and alpha. Only pictures with a palette are decoded as red, green,
// blue; none of the product's pictures has one.
void requestBgra(png_structp png, png_infop info, int bitDepth, int colorType)
{
    if (colorType == PNG_COLOR_TYPE_PALETTE)
        png_set_palette_to_rgb(png);
    if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA)
        png_set_gray_to_rgb(png);
    if (png_get_valid(png, info, PNG_INFO_tRNS))
        png_set_tRNS_to_alpha(png);
    else
        png_set_filler(png, 255, PNG_FILLER_AFTER);
    if (bitDepth == 16)
    {
        png_set_swap(png);
        png_set_strip_16(png);
    }
    if (colorType == PNG_COLOR_TYPE_RGB || colorType == PNG_COLOR_TYPE_RGB_ALPHA)
        png_set_bgr(png);
}
}

CBitmap::CBitmap(const char* name, bool fromFile)
    : context(new CDrawContext()),
      memory(std::make_unique<CMACBitmap>()),
      renderer(std::make_unique<PelmoAGG>())
{
    PNGFileStream file;
    PNGNewResourceStream resource;
    if (fromFile && file.open(name))
        load(file);
    else if (!fromFile && resource.open(name))
        load(resource);
    renditions.find(name, fromFile);
    context->setAGGRenderer(renderer.get());
    context->setTargetBitmap(memory.get());
}

CBitmap::~CBitmap()
{
    context->setAGGRenderer(nullptr);
    context->setTargetBitmap(nullptr);
    context->forget();
}

bool CBitmap::loadFromPath(const void* path)
{
    const char* const name = static_cast<const char*>(path);
    dispose();
    PNGFileStream stream;
    if (!stream.open(name) || !loadFromStream(&stream))
        return false;
    renditions.find(name, true);
    return true;
}

bool CBitmap::loadFromNewResource(const char* name)
{
    dispose();
    PNGNewResourceStream stream;
    if (!stream.open(name) || !loadFromStream(&stream))
        return false;
    renditions.find(name, false);
    return true;
}

bool CBitmap::loadFromResource(const CResourceDescription& description)
{
    dispose();
    PNGResourceStream stream;
    return stream.open(description) && loadFromStream(&stream);
}

void CBitmap::dispose()
{
    attachImg(nullptr);
    renditions.clear();
    width = 0.0;
    height = 0.0;
    loaded = false;
}

bool CBitmap::loadFromStream(ITovraPNGStream* stream)
{
    dispose();
    if (stream)
        load(*stream);
    return stream != nullptr;
}

void CBitmap::loadScaled(ITovraPNGStream& stream, int pixelsPerUnit)
{
    imageScale = pixelsPerUnit;
    loadFromStream(&stream);
}

void CBitmap::load(ITovraPNGStream& stream)
{
    memory->destroy();
    decode(stream);
    loaded = true;
    attachImg(memory.get());
}

// libpng jumps back here on an error, so neither this function nor loadPNGFromStruct has an object with a
// destructor, or changes a local variable that is read after the jump.
void CBitmap::decode(ITovraPNGStream& stream)
{
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, jumpOut, stayQuiet);
    if (!png)
        return;
    png_infop info = png_create_info_struct(png);
    if (info && setjmp(png_jmpbuf(png)) == 0)
    {
        png_set_user_limits(png, PelmoAGG::maxSide, PelmoAGG::maxSide);
        png_set_read_fn(png, &stream, ITovraPNGStream::readCallback);
        loadPNGFromStruct(png, info); // NOLINT(clang-analyzer-optin.*): in a constructor, too, it is this one
    }
    png_destroy_read_struct(&png, &info, nullptr);
}

void CBitmap::loadPNGFromStruct(png_struct_def* png, png_info_def* info)
{
    png_uint_32 columns = 0, rows = 0;
    int bitDepth = 0, colorType = 0;
    png_read_info(png, info);
    png_get_IHDR(png, info, &columns, &rows, &bitDepth, &colorType, nullptr, nullptr, nullptr);
    if (!memory->setSize(columns, rows))
        png_error(png, "too large a picture");
    width = columns;
    height = rows;

    requestBgra(png, info, bitDepth, colorType);
    const int passes = png_set_interlace_handling(png);
    png_read_update_info(png, info);
    if (png_get_rowbytes(png, info) > std::size_t(memory->getRowBytes()))
        png_error(png, "an unknown kind of pixels");

    for (int pass = 0; pass < passes; ++pass)
        for (png_uint_32 y = 0; y < rows; ++y)
        {
            png_bytep row = memory->getPixelPtr() + std::size_t(y) * std::size_t(memory->getRowBytes());
            png_read_rows(png, &row, nullptr, 1);
        }
    png_read_end(png, nullptr);

    premultiply();
    attachImg(memory.get());
}

void CBitmap::premultiply()
{
    unsigned char* pixel = memory->getPixelPtr();
    for (const unsigned char* const end = pixel + memory->getTotalBytes(); pixel != end; pixel += 4)
    {
        const unsigned alpha = pixel[3];
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] = static_cast<unsigned char>(pixel[channel] * alpha >> 8);
    }
}

void CBitmap::attachImg(IOSBitmap* bitmap)
{
    image = PelmoAGG::Image();
    if (bitmap)
        image.attach(bitmap->getPixelPtr(), bitmap->getWidth(), bitmap->getHeight(), bitmap->getRowBytes(),
                     imageScale);
    renderer->attach(image);
}

PelmoAGG* CBitmap::drawable(CDrawContext* target) const
{
    return target && image.getPixels() ? target->getAGGRenderer() : nullptr;
}

void CBitmap::blend(PelmoAGG& onto, CPoint offset, CPoint extent, CPoint at, unsigned alpha)
{
    const PelmoAGG::Image& from = renditions.choose(image, onto.scale());
    const double pixel = 1.0 / from.getScale();
    if (from.getScale() == onto.scale())
        return onto.blendImage(from, offset.x, offset.y, offset.x + extent.x - pixel,
                               offset.y + extent.y - pixel, at.x, at.y, alpha);
    const CRect part(offset.x, offset.y, offset.x + extent.x, offset.y + extent.y);
    const ImageResampling to(from, part, at, onto.scale());
    onto.blendImage(renditions.resample(from, to.part, to.width, to.height, onto.scale()), to.at.x, to.at.y,
                    alpha);
}

void CBitmap::draw(CDrawContext* target, const CRect& rect, const CPoint& offset)
{
    PelmoAGG* const onto = drawable(target);
    if (!onto)
        return;
    const ShrunkenClip clip(*target);
    if (clip.isEmpty())
        return;
    blend(*onto, offset, {std::fabs(rect.getWidth()), std::fabs(rect.getHeight())},
          rect.getTopLeft() + target->getOffset(), 255);
}

void CBitmap::drawTransparent(CDrawContext* target, const CRect& rect, const CPoint& offset)
{
    draw(target, rect, offset);
}

// At scale 1 coordinates are truncated, and so the middles of pixels are safe ones; at others they go to the
// nearest pixel anyway.
void CBitmap::drawAlphaBlend(CDrawContext* target, const CRect& rect, const CPoint& offset,
                             unsigned char alpha)
{
    PelmoAGG* const onto = drawable(target);
    if (!onto)
        return;
    const ShrunkenClip clip(*target);
    if (clip.isEmpty())
        return;
    CPoint extent(std::fabs(rect.getWidth()), std::fabs(rect.getHeight()));
    CPoint from = offset;
    CPoint at = rect.getTopLeft() + target->getOffset();
    if (onto->scale() == 1.0)
    {
        extent.y = std::fabs(rect.getHeight() - 0.5);
        onto->alignPoint(from.x, from.y);
        onto->alignPoint(at.x, at.y);
    }
    blend(*onto, from, extent, at, alpha);
}

void CBitmap::drawScaled(CDrawContext* target, const CRect& source, const CRect& to)
{
    PelmoAGG* const onto = drawable(target);
    if (!onto)
        return;
    const ShrunkenClip clip(*target);
    if (clip.isEmpty())
        return;
    const CPoint offset = target->getOffset();
    onto->imageFilter(kFilterBilinear);
    onto->imageBlendColor(255, 0, 0, 255);
    onto->imageBlendMode(kBlendDst);
    onto->transformImage(renditions.choose(image, onto->scale()), Core::truncate<int>(source.left),
                         Core::truncate<int>(source.top), Core::truncate<int>(source.right),
                         Core::truncate<int>(source.bottom), to.left + offset.x, to.top + offset.y,
                         to.right + offset.x, to.bottom + offset.y);
}
}
