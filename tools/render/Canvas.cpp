#include "tools/render/Canvas.h"

#include "tools/common/ToolError.h"

#include <agg_conv_stroke.h>
#include <agg_embedded_raster_fonts.h>
#include <agg_glyph_raster_bin.h>
#include <agg_gradient_lut.h>
#include <agg_path_storage.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_base.h>
#include <agg_renderer_raster_text.h>
#include <agg_renderer_scanline.h>
#include <agg_rounded_rect.h>
#include <agg_scanline_u.h>
#include <agg_span_allocator.h>
#include <agg_span_gradient.h>
#include <agg_span_interpolator_linear.h>
#include <algorithm>
#include <png.h>
#include <string>

namespace lodex
{
namespace
{
using Pixels = agg::pixfmt_rgba32_plain;
using Base = agg::renderer_base<Pixels>;
using Glyphs = agg::glyph_raster_bin<agg::rgba8>;

agg::rgba8 toAgg(Colour colour)
{
    return {colour.red, colour.green, colour.blue, colour.alpha};
}

agg::path_storage toPath(const std::vector<Point>& points, bool closed)
{
    agg::path_storage path;
    for (const Point& point : points)
        path.total_vertices() == 0 ? path.move_to(point.x, point.y) : path.line_to(point.x, point.y);
    if (closed)
        path.close_polygon();
    return path;
}

const agg::int8u* fontFor(TextSize size)
{
    switch (size)
    {
    case TextSize::small:
        return agg::verdana14;
    case TextSize::normal:
        return agg::verdana16;
    case TextSize::title:
        return agg::verdana18_bold;
    }
    return agg::verdana14;
}

// The embedded fonts know these alone, and do not check.
std::string ascii(std::string_view words)
{
    std::string result;
    for (const char c : words)
        if ((c & 0xC0) != 0x80) // of a UTF-8 character only the first byte
            result += c >= 32 && c < 127 ? c : '?';
    return result;
}
}

struct Canvas::Renderer
{
    Renderer(int width, int height)
        : memory(size_t(width) * size_t(height) * 4),
          buffer(memory.data(), unsigned(width), unsigned(height), width * 4),
          pixels(buffer),
          base(pixels)
    {
    }

    template <typename Path>
    void fill(Path& path, Colour colour)
    {
        rasterizer.reset();
        rasterizer.add_path(path);
        agg::render_scanlines_aa_solid(rasterizer, scanline, base, toAgg(colour));
    }

    std::vector<uint8_t> memory; // four bytes a pixel: red, green, blue, alpha
    agg::rendering_buffer buffer;
    Pixels pixels;
    Base base;
    agg::rasterizer_scanline_aa<> rasterizer;
    agg::scanline_u8 scanline;
};

Canvas::Canvas(int width, int height, Colour background) : renderer(std::make_unique<Renderer>(width, height))
{
    renderer->base.clear(toAgg(background));
}

Canvas::~Canvas() = default;

void Canvas::fill(const std::vector<Point>& outline, Colour colour)
{
    agg::path_storage path = toPath(outline, true);
    renderer->fill(path, colour);
}

void Canvas::fillFading(const std::vector<Point>& outline, double from, Colour atFrom, double to, Colour atTo)
{
    agg::gradient_lut<agg::color_interpolator<agg::rgba8>, 256> colours;
    colours.add_color(0.0, toAgg(atFrom));
    colours.add_color(1.0, toAgg(atTo));
    colours.build_lut();

    agg::trans_affine toUnit; // the gradient runs over 0 to 256
    toUnit.translate(0.0, -from);
    toUnit.scale(1.0, 256.0 / (to - from));
    agg::span_interpolator_linear<> interpolator(toUnit);
    agg::gradient_y shape;
    agg::span_gradient<agg::rgba8, agg::span_interpolator_linear<>, agg::gradient_y, decltype(colours)> spans(
        interpolator, shape, colours, 0.0, 256.0);

    agg::path_storage path = toPath(outline, true);
    agg::span_allocator<agg::rgba8> allocator;
    renderer->rasterizer.reset();
    renderer->rasterizer.add_path(path);
    agg::render_scanlines_aa(renderer->rasterizer, renderer->scanline, renderer->base, allocator, spans);
}

void Canvas::fillRounded(const Box& box, double radius, Colour colour)
{
    agg::rounded_rect path(box.left, box.top, box.right, box.bottom, radius);
    renderer->fill(path, colour);
}

void Canvas::stroke(const std::vector<Point>& line, double width, Colour colour)
{
    agg::path_storage path = toPath(line, false);
    agg::conv_stroke<agg::path_storage> stroked(path);
    stroked.width(width);
    stroked.line_join(agg::round_join);
    stroked.line_cap(agg::round_cap);
    renderer->fill(stroked, colour);
}

void Canvas::text(Point baseline, std::string_view words, TextSize size, Colour colour, TextAlign align)
{
    const double shift = align == TextAlign::left ? 0.0 : align == TextAlign::centre ? 0.5 : 1.0;
    const double left = baseline.x - shift * textWidth(words, size);
    Glyphs glyphs(fontFor(size));
    agg::renderer_raster_htext_solid<Base, Glyphs> writer(renderer->base, glyphs);
    writer.color(toAgg(colour));
    writer.render_text(left, baseline.y, ascii(words).c_str(), true);
}

double Canvas::textWidth(std::string_view words, TextSize size) const
{
    return Glyphs(fontFor(size)).width(ascii(words).c_str());
}

std::vector<uint8_t> Canvas::png() const
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = renderer->pixels.width();
    image.height = renderer->pixels.height();
    image.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<uint8_t> file(size);
    if (!png_image_write_to_memory(&image, file.data(), &size, 0, renderer->memory.data(), 0, nullptr))
        throw ToolError(std::string("cannot make the picture: ") + image.message);
    file.resize(size);
    return file;
}
}
