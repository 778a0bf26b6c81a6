// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/ImageResampling.h"

#include "CORE/Truncate.h"
#include "Tovrane/draw/PixelGrid.h"

#include <agg_image_accessors.h>
#include <agg_image_filters.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rendering_buffer.h>
#include <agg_span_image_filter_rgba.h>
#include <agg_span_interpolator_linear.h>
#include <agg_trans_affine.h>
#include <vector>

namespace Tovra
{
ImageResampling::ImageResampling(const PelmoAGG::Image& image, CRect wanted, CPoint to, double scale)
{
    const PixelGrid source(image.getScale());
    const PixelGrid target(scale);
    const CPoint origin = wanted.getTopLeft();
    wanted.bound(CRect(0.0, 0.0, source.toUnits(image.getWidth()), source.toUnits(image.getHeight())));
    if (wanted.isEmpty())
        return;
    const auto first = [&source](double edge) { return Core::truncate<int>(source.pixel(edge)); };
    part = {first(wanted.left), first(wanted.top), first(wanted.right) - 1, first(wanted.bottom) - 1};
    to = to + wanted.getTopLeft() - origin;
    const double left = target.pixel(to.x);
    const double top = target.pixel(to.y);
    width = Core::truncate<unsigned>(target.pixel(to.x + wanted.getWidth()) - left);
    height = Core::truncate<unsigned>(target.pixel(to.y + wanted.getHeight()) - top);
    at = CPoint(target.toUnits(left), target.toUnits(top));
}

static PelmoAGG::Image cutOut(const PelmoAGG::Image& image, const agg::rect_i& part)
{
    constexpr std::ptrdiff_t pixelBytes = 4;
    const unsigned height = unsigned(part.y2 - part.y1 + 1);
    unsigned char* const lowest = image.row(image.getStride() < 0 ? part.y2 : part.y1) + part.x1 * pixelBytes;
    return {lowest, unsigned(part.x2 - part.x1 + 1), height, image.getStride(), image.getScale()};
}

void resampleImage(const PelmoAGG::Image& image, const agg::rect_i& part, const PelmoAGG::Image& target)
{
    using Rows = agg::row_accessor<unsigned char>;
    using Pixels = agg::pixfmt_bgra32_pre;
    using Source = agg::image_accessor_clone<Pixels>;
    using Interpolator = agg::span_interpolator_linear<>;
    const PelmoAGG::Image from = cutOut(image, part);
    Rows rows(from.getPixels(), from.getWidth(), from.getHeight(), from.getStride());
    Pixels pixels(rows);
    Source source(pixels);
    agg::trans_affine_scaling toSource(double(from.getWidth()) / target.getWidth(),
                                       double(from.getHeight()) / target.getHeight());
    Interpolator interpolator(toSource);
    agg::image_filter_lut filter(agg::image_filter_bilinear(), true);
    agg::span_image_resample_rgba_affine<Source> spans(source, interpolator, filter);
    spans.prepare();
    std::vector<agg::rgba8> row(target.getWidth());
    for (int y = 0; y < int(target.getHeight()); ++y)
    {
        spans.generate(row.data(), 0, y, target.getWidth());
        unsigned char* to = target.row(y);
        for (const agg::rgba8& color : row)
        {
            to[agg::order_bgra::B] = color.b;
            to[agg::order_bgra::G] = color.g;
            to[agg::order_bgra::R] = color.r;
            to[agg::order_bgra::A] = color.a;
            to += 4;
        }
    }
}
}
