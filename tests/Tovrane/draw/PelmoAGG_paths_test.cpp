// SPDX-License-Identifier: GPL-3.0-or-later
// Shapes, however they are drawn quickly, have the pixels that AGG's own pipeline gives them.
#include "Tovrane/draw/DrawnPicture.h"

#include <agg_bezier_arc.h>
#include <agg_conv_curve.h>
#include <agg_conv_stroke.h>
#include <agg_path_storage.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_base.h>
#include <agg_renderer_scanline.h>
#include <agg_scanline_u.h>
#include <agg_span_allocator.h>
#include <agg_span_gradient.h>
#include <agg_span_interpolator_linear.h>
#include <random>

using namespace Tovra;

namespace
{
constexpr int side = 64;

struct Shape
{
    agg::path_storage path;
    bool isEllipse = false;
    double left = 0, top = 0, right = 0, bottom = 0; // of an ellipse, and of the gradient
    bool isGradient = false;
    agg::rgba8 fill, line, other;
    double width = 0;
    agg::rect_d clip;
    agg::rect_i scissor; // its right and bottom edges are outside
};

class Dice
{
public:
    int number(int below) { return int(engine() % unsigned(below)); }
    double coordinate()
    {
        return number(side * 2) - side / 2 + (number(2) ? number(256) / 256.0 + 0.0007 : 0.0);
    }
    agg::rgba8 color()
    {
        const auto byte = [this] { return unsigned(number(256)); };
        return {byte(), byte(), byte(), number(3) ? byte() : number(2) * 255u};
    }

    // Half of them have the outline of one of the last few.
    Shape shape()
    {
        Shape made = anyShape();
        Shape& known = former[size_t(number(int(former.size())))];
        if (number(2) && known.path.total_vertices() > 0)
        {
            made.isEllipse = known.isEllipse;
            made.path = known.path;
            made.width = known.width;
            made.left = known.left;
            made.top = known.top;
            made.right = known.right;
            made.bottom = known.bottom;
        }
        return known = made;
    }

private:
    Shape anyShape()
    {
        Shape made;
        made.isEllipse = number(3) == 0;
        made.left = coordinate();
        made.top = coordinate();
        made.right = coordinate();
        made.bottom = coordinate();
        made.path.move_to(made.left, made.top);
        for (int corner = 1 + number(6); corner > 0; --corner)
            made.path.line_to(coordinate(), coordinate());
        if (number(2))
            made.path.close_polygon();
        made.isGradient = number(3) == 0;
        if (made.isGradient && number(2))
            made.right = made.left; // so that a row has one colour
        made.fill = color();
        made.line = color();
        made.other = color();
        made.width = number(80) / 8.0;
        made.clip = number(2) ? agg::rect_d(0, 0, side, side)
                              : agg::rect_d(coordinate(), coordinate(), coordinate(), coordinate());
        const int x = number(side), y = number(side);
        made.scissor = number(2) ? agg::rect_i(0, 0, side, side)
                                 : agg::rect_i(x, y, x + 1 + number(30), y + 1 + number(30));
        return made;
    }

    std::mt19937 engine{1};
    std::array<Shape, 4> former;
};

void drawQuickly(DrawnPicture& picture, const Shape& shape)
{
    PelmoAGG& agg = picture.renderer;
    agg.scissor(shape.scissor.x1, shape.scissor.y1, shape.scissor.x2, shape.scissor.y2);
    agg.clipBox(shape.clip.x1, shape.clip.y1, shape.clip.x2, shape.clip.y2);
    agg.lineWidth(shape.width);
    agg.lineColor(shape.line);
    agg.fillColor(shape.fill);
    if (shape.isGradient)
        agg.fillLinearGradient(shape.left, shape.top, shape.right, shape.bottom, shape.fill, shape.other,
                               1.0);
    if (shape.isEllipse)
        return agg.ellipse(shape.left, shape.top, shape.right, shape.bottom);
    agg.resetPath();
    for (unsigned i = 0; i < shape.path.total_vertices(); ++i)
    {
        double x, y;
        const unsigned command = shape.path.vertex(i, &x, &y);
        if (agg::is_move_to(command))
            agg.moveTo(x, y);
        else if (agg::is_vertex(command))
            agg.lineTo(x, y);
        else
            agg.closePolygon();
    }
    agg.drawPath(kFillAndStroke);
}

using Pixels = agg::pixfmt_alpha_blend_rgba<agg::blender_rgba<agg::rgba8, agg::order_bgra>,
                                            agg::row_accessor<unsigned char>>;
using Table = agg::pod_auto_array<agg::rgba8, 256>;

struct PlainPipeline
{
    PlainPipeline(DrawnPicture& picture, const Shape& shape)
        : rows(picture.memory.data(), unsigned(side), unsigned(side), side * 4), pixels(rows), base(pixels)
    {
        agg::rect_i box(int(shape.clip.x1), int(shape.clip.y1), int(shape.clip.x2), int(shape.clip.y2));
        box.normalize();
        const agg::rect_i& scissor = shape.scissor;
        isOpen = box.clip({0, 0, side - 1, side - 1}) &&
                 box.clip({scissor.x1, scissor.y1, scissor.x2 - 1, scissor.y2 - 1}) &&
                 shape.clip.x1 != shape.clip.x2 && shape.clip.y1 != shape.clip.y2;
        base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
        const auto inside = [](double v) { return std::clamp(v, 0.0, double(side)); };
        rasterizer.clip_box(inside(shape.clip.x1), inside(shape.clip.y1), inside(shape.clip.x2),
                            inside(shape.clip.y2));
    }

    void fill(const Shape& shape, const agg::rgba8* colors)
    {
        if (!shape.isGradient)
            return agg::render_scanlines_aa_solid(rasterizer, scanline, base, shape.fill);
        const double dx = shape.right - shape.left, dy = shape.bottom - shape.top;
        agg::trans_affine matrix = agg::trans_affine_rotation(std::atan2(dy, dx));
        matrix *= agg::trans_affine_translation(shape.left, shape.top);
        matrix.invert();
        Table table;
        std::copy_n(colors, 256, &table[0]);
        agg::span_interpolator_linear<> interpolator(matrix);
        agg::gradient_x along;
        agg::span_gradient<agg::rgba8, agg::span_interpolator_linear<>, agg::gradient_x, Table> gradient(
            interpolator, along, table, 0.0, std::sqrt(dx * dx + dy * dy));
        agg::span_allocator<agg::rgba8> spans;
        agg::render_scanlines_aa(rasterizer, scanline, base, spans, gradient);
    }

    agg::row_accessor<unsigned char> rows;
    Pixels pixels;
    agg::renderer_base<Pixels> base;
    agg::rasterizer_scanline_aa<agg::rasterizer_sl_clip<agg::ras_conv_int>> rasterizer;
    agg::scanline_u8 scanline;
    bool isOpen = false;
};

void drawPlainly(DrawnPicture& picture, Shape& shape, const agg::rgba8* colors)
{
    PlainPipeline plain(picture, shape);
    if (!plain.isOpen)
        return;
    if (shape.isEllipse)
    {
        agg::bezier_arc all(shape.left, shape.top, shape.right, shape.bottom, 0.0, 2.0 * agg::pi);
        shape.path.remove_all();
        shape.path.concat_path(all);
        shape.path.close_polygon();
    }
    agg::conv_curve<agg::path_storage> curves(shape.path);
    curves.approximation_scale(2.0);
    agg::conv_stroke<decltype(curves)> stroke(curves);
    stroke.width(shape.width);
    if (shape.isGradient || shape.fill.a > 0)
    {
        plain.rasterizer.add_path(curves);
        plain.fill(shape, colors);
    }
    if (shape.line.a > 0 && shape.width > 0.0)
    {
        plain.rasterizer.reset();
        plain.rasterizer.add_path(stroke);
        agg::render_scanlines_aa_solid(plain.rasterizer, plain.scanline, plain.base, shape.line);
    }
}
}

TEST(PelmoAGGPaths, HaveThePixelsOfAggsOwnPipeline)
{
    Dice dice;
    DrawnPicture drawn(side, side), expected(side, side);
    int touched = 0;
    for (int round = 0; round < 8000; ++round)
    {
        Shape shape = dice.shape();
        const auto before = drawn.memory;
        drawQuickly(drawn, shape);
        drawPlainly(expected, shape, drawn.renderer.fillGradientTable());
        ASSERT_TRUE(drawn.memory == expected.memory) << "round " << round;
        touched += drawn.memory != before;
    }
    EXPECT_GT(touched, 2000);
}
