// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGGPipelines.h"

#include "Tovrane/draw/PelmoText.h"

#include <agg_image_accessors.h>
#include <agg_span_gradient.h>
#include <agg_span_image_filter_rgba.h>
#include <agg_span_interpolator_linear.h>

namespace Tovra
{
PelmoAGG::Pipelines::Pipelines() : text(std::make_unique<PelmoText>())
{
    curves.approximation_scale(flattening());
    std::fill_n(&fillTable[0], fillTable.size(), agg::rgba8(0, 0, 0, 0));
    resetState();
}

PelmoAGG::Pipelines::~Pipelines() = default;

agg::rgba8 PelmoAGG::Pipelines::scaledByMaster(agg::rgba8 color) const
{
    color.a = agg::int8u(color.a * masterAlpha);
    return color;
}

void PelmoAGG::Pipelines::resetState()
{
    masterAlpha = 1.0;
    blendMode = kBlendAlpha;
    imageBlendMode = kBlendDst;
    imageBlendColor = agg::rgba8(0, 0, 0, 0);
    imageResample = false;
    fillColor = agg::rgba8(255, 255, 255, 255);
    lineColor = agg::rgba8(0, 0, 0, 255);
    fillIsGradient = false;
    text->alignment(kAlignLeftOrBottom, kAlignRightOrTop);
}

void PelmoAGG::Pipelines::closeClip()
{
    clipClosed = true;
    openClip({1, 1, 0, 0});
}

void PelmoAGG::Pipelines::openClip(const agg::rect_i& box)
{
    clipPixels = box;
    rasterizer.window(box);
    plain.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
    comp.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
    compPre.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
    pre.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
    lcd.base.clip_box_naked(box.x1 * 3, box.y1, box.x2 * 3 + 2, box.y2);
}

template <class Pixels>
static void renderSolid(PelmoAGG::Pipelines& agg, PixelPath<Pixels>& to, const agg::rgba8& color)
{
    agg::render_scanlines_aa_solid(agg.rasterizer, agg.scanline, to.base, color);
}

void PelmoAGGRenderer::render(PelmoAGG::Pipelines& agg, const agg::rgba8& color)
{
    if (agg.blendMode == kBlendAlpha)
        renderSolid(agg, agg.plain, color);
    else
        renderSolid(agg, agg.comp, color);
}

using Interpolator = agg::span_interpolator_linear<>;

// Generates the colours of a linear gradient. A span at a right angle to it, as all spans of a vertical
// gradient are, has one colour.
class GradientSpans : public agg::span_gradient<agg::rgba8, Interpolator, agg::gradient_x, ColorTable>
{
public:
    using span_gradient::span_gradient;

    void generate(agg::rgba8* span, int x, int y, unsigned length)
    {
        if (!isOfOneColor(x, y, length))
            return span_gradient::generate(span, x, y, length);
        span_gradient::generate(span, x, y, 1);
        std::fill_n(span + 1, length - 1, *span);
    }

private:
    // If both ends are equal the interpolator makes no steps between them.
    bool isOfOneColor(int x, int y, unsigned length)
    {
        const auto along = [this, y](double at)
        {
            double down = y + 0.5;
            interpolator().transformer().transform(&at, &down);
            return agg::iround(at * int(Interpolator::subpixel_scale));
        };
        return along(x + 0.5) == along(x + 0.5 + length);
    }
};

void PelmoAGGRenderer::renderWithFillType(PelmoAGG::Pipelines& agg)
{
    Interpolator interpolator(agg.fillMatrix);
    agg::gradient_x along;
    GradientSpans gradient(interpolator, along, agg.fillTable, 0.0, agg.fillDistance);
    if (agg.blendMode == kBlendAlpha)
        agg::render_scanlines_aa(agg.rasterizer, agg.scanline, agg.plain.base, agg.spans, gradient);
    else
        agg::render_scanlines_aa(agg.rasterizer, agg.scanline, agg.comp.base, agg.spans, gradient);
}

// Gives the image filters access to an image.
struct PelmoImageAdaptor
{
    using Pixels = PrePixels;

    explicit PelmoImageAdaptor(const PelmoAGG::Image& image)
        : rows(image.getPixels(), image.getWidth(), image.getHeight(), image.getStride()), pixels(rows)
    {
    }

    Rows rows;
    Pixels pixels;
};

template <class Spans>
static void renderSpans(PelmoAGG::Pipelines& agg, Spans& spans)
{
    if (agg.blendMode == kBlendAlpha)
        agg::render_scanlines_aa(agg.rasterizer, agg.scanline, agg.pre.base, agg.spans, spans);
    else
        agg::render_scanlines_aa(agg.rasterizer, agg.scanline, agg.compPre.base, agg.spans, spans);
}

void PelmoAGGRenderer::renderImage(PelmoAGG::Pipelines& agg, const PelmoAGG::Image& image,
                                   agg::trans_affine toSource)
{
    using Source = agg::image_accessor_clip<PelmoImageAdaptor::Pixels>;
    PelmoImageAdaptor adaptor(image);
    Source source(adaptor.pixels, agg.imageBlendColor);
    Interpolator interpolator(toSource);

    if (agg.imageResample && agg.imageFilter != kFilterNone)
    {
        agg::span_image_resample_rgba_affine<Source> spans(source, interpolator, agg.filterTable);
        return renderSpans(agg, spans);
    }
    switch (agg.imageFilter)
    {
    case kFilterNone:
    {
        agg::span_image_filter_rgba_nn<Source, Interpolator> spans(source, interpolator);
        return renderSpans(agg, spans);
    }
    case kFilterBilinear:
    {
        using Spans = agg::span_image_filter_rgba_bilinear_clip<PelmoImageAdaptor::Pixels, Interpolator>;
        Spans spans(adaptor.pixels, agg.imageBlendColor, interpolator);
        return renderSpans(agg, spans);
    }
    case kFilterHanning:
    case kFilterHermite:
    {
        agg::span_image_filter_rgba_2x2<Source, Interpolator> spans(source, interpolator, agg.filterTable);
        return renderSpans(agg, spans);
    }
    default:
    {
        agg::span_image_filter_rgba<Source, Interpolator> spans(source, interpolator, agg.filterTable);
        return renderSpans(agg, spans);
    }
    }
}
}
