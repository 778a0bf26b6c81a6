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
    plain.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
    comp.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
    compPre.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
    pre.base.clip_box_naked(box.x1, box.y1, box.x2, box.y2);
}

void PelmoAGG::Pipelines::beginShape(Colors colors)
{
    covered = nullptr;
    if (colors == oneColor)
        rasterizer.window(clipPixels);
    else
        rasterizer.window({0, clipPixels.y1, int(picture.getWidth()) - 1, clipPixels.y2});
}

namespace
{
// These draw what the rasteriser covers, and clip: in one colour,
template <class Base>
struct SolidSink
{
    Base& base;
    agg::rgba8 color;
    int row = 0;

    bool begin_row(int y, int, int)
    {
        row = y;
        return true;
    }
    void covers(int x, unsigned length, const agg::int8u* covers)
    {
        base.blend_solid_hspan(x, row, int(length), color, covers);
    }
    void run(int x, unsigned length, agg::int8u cover)
    {
        base.blend_hline(x, row, x + int(length) - 1, color, cover);
    }
};

// or in those that a generator of AGG's makes for a span.
template <class Base, class Generator>
struct GeneratedSink
{
    Base& base;
    agg::span_allocator<agg::rgba8>& spans;
    Generator& generator;
    int row = 0;

    bool begin_row(int y, int, int)
    {
        row = y;
        return false;
    }
    void covers(int x, unsigned length, const agg::int8u* covers)
    {
        agg::rgba8* const colors = spans.allocate(length);
        generator.generate(colors, x, row, length);
        base.blend_color_hspan(x, row, int(length), colors, covers);
    }
    void run(int, unsigned, agg::int8u) {}
};
}

// What is kept of a shape is what it covers of the whole clip.
template <class Sink>
static void sweep(PelmoAGG::Pipelines& agg, Sink sink)
{
    const agg::coverage_record::frame frame{agg.rasterizer.clip(), agg.wholeClip};
    const agg::coverage_record::frame present{agg.rasterizer.clip(), agg.clipPixels};
    if (agg.covered != nullptr && agg.covered->is_complete(frame))
        agg.covered->replay(agg.clipPixels, sink);
    else if (agg.covered != nullptr && present == frame && agg.covered->begin(frame))
        agg.rasterizer.sweep(agg::recording_sink<Sink>(sink, *agg.covered));
    else
        agg.rasterizer.sweep(sink);
}

void PelmoAGGRenderer::render(PelmoAGG::Pipelines& agg, const agg::rgba8& color)
{
    if (agg.blendMode == kBlendAlpha)
        sweep(agg, agg::pixfmt_bgra::ink(agg.plain.pixels, color));
    else
        sweep(agg, SolidSink<decltype(agg.comp.base)>{agg.comp.base, color});
}

using Interpolator = agg::span_interpolator_linear<>;

// Generates the colours of a linear gradient. Pixels in a row at a right angle to it, as all rows of a
// vertical gradient are, have one colour.
class GradientSpans : public agg::span_gradient<agg::rgba8, Interpolator, agg::gradient_x, ColorTable>
{
public:
    using span_gradient::span_gradient;

    // If the interpolator makes no step from the first of these pixels to beyond the last one, it makes none
    // between them.
    bool isOfOneColor(int first, int beyond, int y)
    {
        const auto along = [this, y](double at)
        {
            double down = y + 0.5;
            interpolator().transformer().transform(&at, &down);
            return agg::iround(at * int(Interpolator::subpixel_scale));
        };
        return along(first + 0.5) == along(beyond + 0.5);
    }

    agg::rgba8 colorAt(int x, int y)
    {
        agg::rgba8 color;
        generate(&color, x, y, 1);
        return color;
    }
};

template <class Base>
struct GradientSink
{
    SolidSink<Base> plain;
    GeneratedSink<Base, GradientSpans> graded;
    bool isPlain = false;

    bool begin_row(int y, int first, int beyond)
    {
        isPlain = graded.generator.isOfOneColor(first, beyond, y);
        if (isPlain)
        {
            plain.color = graded.generator.colorAt(first, y);
            plain.begin_row(y, first, beyond);
        }
        else
            graded.begin_row(y, first, beyond);
        return isPlain;
    }
    void covers(int x, unsigned length, const agg::int8u* covers)
    {
        isPlain ? plain.covers(x, length, covers) : graded.covers(x, length, covers);
    }
    void run(int x, unsigned length, agg::int8u cover) { plain.run(x, length, cover); }
};

template <class Base>
static void renderGradient(PelmoAGG::Pipelines& agg, Base& base, GradientSpans& gradient)
{
    agg.rasterizer.sweep(GradientSink<Base>{{base, {}}, {base, agg.spans, gradient}});
}

void PelmoAGGRenderer::renderWithFillType(PelmoAGG::Pipelines& agg)
{
    Interpolator interpolator(agg.fillMatrix);
    agg::gradient_x along;
    GradientSpans gradient(interpolator, along, agg.fillTable, 0.0, agg.fillDistance);
    if (agg.blendMode == kBlendAlpha)
        renderGradient(agg, agg.plain.base, gradient);
    else
        renderGradient(agg, agg.comp.base, gradient);
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

template <class Base, class Spans>
static void renderSpansOn(PelmoAGG::Pipelines& agg, Base& base, Spans& spans)
{
    agg.rasterizer.sweep(GeneratedSink<Base, Spans>{base, agg.spans, spans});
}

template <class Spans>
static void renderSpans(PelmoAGG::Pipelines& agg, Spans& spans)
{
    spans.prepare();
    if (agg.blendMode == kBlendAlpha)
        renderSpansOn(agg, agg.pre.base, spans);
    else
        renderSpansOn(agg, agg.compPre.base, spans);
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
