// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoText.h"

#include "CORE/Utf8.h"
#include "Tovrane/lib/glyph_masks.h"

#include <agg_conv_transform.h>
#include <string_view>

namespace Utf8 = Core::Utf8;

namespace Tovra
{
namespace
{
constexpr double tallestFont = 1000.0;
constexpr double smallestAngle = 1e-6;
constexpr double firstGreyScale = 1.5; // pixels are too small to see thirds of them

constexpr char32_t lastCached = 0xFFFF; // the cache of glyphs knows two bytes

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
    agg::glyph_masks glyphs{engine};
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

void PelmoText::useSubpixels(SubpixelOrder order)
{
    hasSubpixels = order == kSubpixelRGB || order == kSubpixelBGR;
    isRedFirst = order != kSubpixelBGR;
    if (fonts)
        fonts->glyphs.red_first(isRedFirst);
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
    fonts->glyphs.red_first(isRedFirst);
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
    agg::glyph_masks& glyphs = fonts->glyphs;
    glyphs.begin_text();
    double x = 0.0;
    double y = 0.0;
    for (std::string_view text = string; !text.empty();)
        if (const agg::masked_glyph* const glyph = glyphs.glyph(takeCharacter(text)))
        {
            glyphs.add_kerning(&x, &y);
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
    auto& [engine, glyphs] = *fonts;
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

    glyphs.begin_text();
    for (std::string_view text = string; !text.empty();)
        if (agg::masked_glyph* const glyph = glyphs.glyph(takeCharacter(text)))
        {
            glyphs.add_kerning(&x, &y);
            drawGlyph(renderer, *glyph, x, y);
            x += glyph->advance_x;
            y += glyph->advance_y;
        }
}

// Only what has coverage, since a compositing operator may change a pixel without any.
template <class Base>
static void drawGrey(Base& base, const agg::rect_i& clip, const agg::masked_glyph& glyph, int x, int y,
                     const agg::rgba8& color)
{
    const auto blend = [&](int left, int row, unsigned length, const agg::int8u* covers)
    {
        const agg::int8u* const end = covers + length;
        for (const agg::int8u *from = covers, *to; from != end; from = to)
        {
            from = std::find_if(from, end, [](agg::int8u cover) { return cover != 0; });
            to = std::find(from, end, agg::int8u(0));
            if (from != to)
                base.blend_solid_hspan(left + int(from - covers), row, int(to - from), color, from);
        }
    };
    glyph.covers.for_each_row(x, y, clip, blend);
}

// Rounds down.
static int thirdsOf(int thirds, int& pixels)
{
    const int rest = (thirds % 3 + 3) % 3;
    pixels = (thirds - rest) / 3;
    return rest;
}

void PelmoText::drawGlyph(PelmoAGG& renderer, agg::masked_glyph& glyph, double x, double y)
{
    auto& p = *renderer.pipelines;
    if (glyph.type == agg::glyph_data_outline)
        drawOutline(renderer, glyph, pulledIn(x), pulledIn(y));
    else if (opened.type == kFontCacheLCD)
        drawSubpixels(p, glyph, agg::iround(pulledIn(x) * 3.0), agg::iround(pulledIn(y)));
    else if (p.blendMode == kBlendAlpha)
        drawGrey(p.plain.base, p.clipPixels, glyph, agg::iround(pulledIn(x)), agg::iround(pulledIn(y)),
                 p.lineColor);
    else
        drawGrey(p.comp.base, p.clipPixels, glyph, agg::iround(pulledIn(x)), agg::iround(pulledIn(y)),
                 p.lineColor);
}

void PelmoText::drawSubpixels(PelmoAGG::Pipelines& p, agg::masked_glyph& glyph, int thirds, int y)
{
    int x = 0;
    const int phase = thirdsOf(thirds, x);
    const auto blend = [&p](int left, int row, unsigned length, const agg::int8u* covers)
    { p.lcd.blend_pixels(left, row, length, p.lineColor, covers); };
    fonts->glyphs.phase(glyph, unsigned(phase)).for_each_row(x, y, p.clipPixels, blend);
}

void PelmoText::drawOutline(PelmoAGG& renderer, const agg::masked_glyph& glyph, double x, double y)
{
    agg::trans_affine rotation;
    if (std::fabs(angle) > smallestAngle)
    {
        rotation *= agg::trans_affine_translation(-startX, -startY);
        rotation *= agg::trans_affine_rotation(angle);
        rotation *= agg::trans_affine_translation(startX, startY);
    }
    agg::font_engine_ft2_lcd::path_adaptor_type outline;
    outline.init(glyph.outline.data(), unsigned(glyph.outline.size()), x, y);
    agg::conv_transform<decltype(outline)> rotated(outline, rotation);
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
    pipelines->text->useSubpixels(order);
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
