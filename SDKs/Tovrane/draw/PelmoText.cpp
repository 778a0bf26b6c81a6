// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoText.h"

#include "CORE/Utf8.h"
#include "Tovrane/lib/font_engine_ft2_lcd.h"

#include <agg_conv_transform.h>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Utf8 = Core::Utf8;

namespace Tovra
{
namespace
{
constexpr double tallestFont = 1000.0;
constexpr double smallestAngle = 1e-6;
constexpr double firstGreyScale = 1.5; // pixels are too small to see thirds of them

constexpr char32_t lastCached = 0xFFFF; // the glyph cache knows two bytes

// Takes the first character off text. A byte that begins no valid UTF-8, or no whole sequence, is its own
// code.
unsigned takeCharacter(std::string_view& text)
{
    const Utf8::CodePoint next = Utf8::decode(text);
    const bool isByte = next.form == Utf8::Form::broken || Utf8::sequenceLength(text[0]) == 0;
    const char32_t code = isByte ? static_cast<unsigned char>(text[0]) : next.value;
    text.remove_prefix(isByte ? 1 : next.length);
    return code > lastCached ? Utf8::replacementCharacter : code;
}

agg::glyph_ft2_lcd_type glyphType(FontCacheType type)
{
    switch (type)
    {
    case kFontCacheLCD:
        return agg::glyph_ft2_lcd;
    case kFontCacheOutline:
        return agg::glyph_ft2_outline;
    default:
        return agg::glyph_ft2_gray8;
    }
}

// How far the alignment shifts a text of that extent.
double alignedShift(TextAlignment alignment, double extent)
{
    switch (alignment)
    {
    case kAlignRightOrTop:
        return -extent;
    case kAlignCenter:
        return -extent * 0.5;
    default:
        return 0.0;
    }
}
}

struct PelmoText::Fonts
{
    agg::font_engine_ft2_lcd engine;
    agg::font_cache_manager<agg::font_engine_ft2_lcd> cache{engine};
};

PelmoText::PelmoText() = default;
PelmoText::~PelmoText() = default;

void PelmoText::font(const char* name, const char* data, long length, double height, FontCacheType type,
                     double textAngle)
{
    if (!name || !areNumbers(height) || !std::isfinite(textAngle))
        return;
    angle = textAngle;
    if (wanted.name != name)
        wanted.name = name;
    wanted.data = data;
    wanted.length = length;
    wanted.height = std::clamp(height, 0.0, tallestFont);
    wanted.type = type;
}

void PelmoText::alignment(TextAlignment x, TextAlignment y)
{
    alignX = x;
    alignY = y;
}

void PelmoText::hints(TextHintsType hints)
{
    wanted.hints = hints;
}

// Opens the font that is wanted, or keeps the former one, with its size. False if there is none.
bool PelmoText::openFont()
{
    Face face = wanted;
    if (face.type == kFontCacheLCD && (!hasSubpixels || face.scale >= firstGreyScale))
        face.type = kFontCacheGrey;
    if (face == opened || face.name.empty())
        return hasSize;
    if (!fonts)
        fonts = std::make_unique<Fonts>();
    agg::font_engine_ft2_lcd& engine = fonts->engine;
    if (!engine.load_font(face.name.c_str(), 0, glyphType(face.type), face.data, face.length))
    {
        wanted = opened;
        wanted.scale = face.scale;
        return hasSize;
    }
    engine.flip_y(true);
    engine.hinting(agg::glyph_ft2_hining(face.hints));
    hasSize = engine.height(std::min(face.height * face.scale, tallestFont));
    opened = face;
    return hasSize;
}

double PelmoText::width(const char* string)
{
    if (!string || !openFont())
        return 0.0;
    auto& cache = fonts->cache;
    cache.reset_last_glyph();
    double x = 0.0;
    double y = 0.0;
    for (std::string_view text = string; !text.empty();)
        if (const agg::glyph_cache* const glyph = cache.glyph(takeCharacter(text)))
        {
            cache.add_kerning(&x, &y);
            x += glyph->advance_x;
            y += glyph->advance_y;
        }
    return x;
}

void PelmoText::draw(PelmoAGG& renderer, double x, double y, const char* string, bool roundOff, double ddx,
                     double ddy)
{
    if (!string || !areNumbers(x, y, ddx, ddy) || renderer.pipelines->closed() || !openFont())
        return;
    auto& [engine, cache] = *fonts;
    const double height = alignedShift(alignY, engine.ascender());
    x = pulledIn(x) + (alignX == kAlignLeftOrBottom ? 0.0 : alignedShift(alignX, width(string)));
    y = pulledIn(y) + (engine.flip_y() ? -height : height);
    if (roundOff)
    {
        x = std::trunc(x);
        y = std::trunc(y);
    }
    startX = x += pulledIn(ddx);
    startY = y += pulledIn(ddy);

    cache.reset_last_glyph();
    for (std::string_view text = string; !text.empty();)
        if (const agg::glyph_cache* const glyph = cache.glyph(takeCharacter(text)))
        {
            cache.add_kerning(&x, &y);
            drawGlyph(renderer, *glyph, x, y);
            x += glyph->advance_x;
            y += glyph->advance_y;
        }
}

template <class Base, class Adaptor, class Scanline>
static void renderGlyph(Base& base, Adaptor& glyph, Scanline& scanline, const agg::rgba8& color)
{
    agg::render_scanlines_aa_solid(glyph, scanline, base, color);
}

template <class Base, class Adaptor, class Scanline>
static void renderMonoGlyph(Base& base, Adaptor& glyph, Scanline& scanline, const agg::rgba8& color)
{
    agg::render_scanlines_bin_solid(glyph, scanline, base, color);
}

// A blank has no scanlines, and its bounds (left above right) would overflow when a position is added.
static bool isBlank(const agg::glyph_cache& glyph)
{
    struct
    {
        std::int32_t left, top, right, bottom;
    } bounds;
    if (glyph.data_type == agg::glyph_data_outline || glyph.data_size < sizeof bounds)
        return glyph.data_size == 0;
    std::memcpy(&bounds, glyph.data, sizeof bounds);
    return bounds.left > bounds.right;
}

void PelmoText::drawGlyph(PelmoAGG& renderer, const agg::glyph_cache& glyph, double x, double y)
{
    if (isBlank(glyph))
        return;
    auto& cache = fonts->cache;
    auto& p = *renderer.pipelines;
    const bool plain = p.blendMode == kBlendAlpha;
    const bool inThirds = glyph.data_type == agg::glyph_data_gray8 && opened.type == kFontCacheLCD;
    cache.init_embedded_adaptors(&glyph, pulledIn(x) * (inThirds ? 3.0 : 1.0), pulledIn(y));
    switch (glyph.data_type)
    {
    case agg::glyph_data_mono:
        if (plain)
            renderMonoGlyph(p.plain.base, cache.mono_adaptor(), cache.mono_scanline(), p.lineColor);
        else
            renderMonoGlyph(p.comp.base, cache.mono_adaptor(), cache.mono_scanline(), p.lineColor);
        break;
    case agg::glyph_data_gray8:
        if (inThirds)
            renderGlyph(p.lcd.base, cache.gray8_adaptor(), cache.gray8_scanline(), p.lineColor);
        else if (plain)
            renderGlyph(p.plain.base, cache.gray8_adaptor(), cache.gray8_scanline(), p.lineColor);
        else
            renderGlyph(p.comp.base, cache.gray8_adaptor(), cache.gray8_scanline(), p.lineColor);
        break;
    case agg::glyph_data_outline:
        drawOutline(renderer);
        break;
    default:
        break;
    }
}

void PelmoText::drawOutline(PelmoAGG& renderer)
{
    agg::trans_affine rotation;
    if (std::fabs(angle) > smallestAngle)
    {
        rotation *= agg::trans_affine_translation(-startX, -startY);
        rotation *= agg::trans_affine_rotation(angle);
        rotation *= agg::trans_affine_translation(startX, startY);
    }
    auto& adaptor = fonts->cache.path_adaptor();
    agg::conv_transform<std::remove_reference_t<decltype(adaptor)>> rotated(adaptor, rotation);
    renderer.resetPath();
    renderer.pipelines->path.concat_path(rotated);
    renderer.drawPath(kFillAndStroke);
}

void PelmoAGG::font(const char* name, const char* data, long length, double height, FontCacheType type,
                    double angle)
{
    pipelines->text->font(name, data, length, height, type, angle);
}

void PelmoAGG::textAlignment(TextAlignment x, TextAlignment y)
{
    pipelines->text->alignment(x, y);
}

void PelmoAGG::textHints(TextHintsType hints)
{
    pipelines->text->hints(hints);
}

TextHintsType PelmoAGG::textHints() const
{
    return pipelines->text->hints();
}

void PelmoAGG::subpixelOrder(SubpixelOrder order)
{
    pipelines->subpixels = order;
    pipelines->lcd.pixels.red_first(order != kSubpixelBGR);
    pipelines->text->useSubpixels(order == kSubpixelRGB || order == kSubpixelBGR);
}

SubpixelOrder PelmoAGG::subpixelOrder() const
{
    return pipelines->subpixels;
}

double PelmoAGG::textWidth(const char* string)
{
    return pipelines->grid.toUnits(pipelines->text->width(string));
}

void PelmoAGG::text(double x, double y, const char* string, bool roundOff, double ddx, double ddy)
{
    const PixelGrid& grid = pipelines->grid;
    pipelines->text->draw(*this, grid.toPixels(x), grid.toPixels(y), string, roundOff, grid.toPixels(ddx),
                          grid.toPixels(ddy));
}
}
