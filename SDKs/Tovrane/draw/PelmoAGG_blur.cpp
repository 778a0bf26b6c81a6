// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGGPipelines.h"

#include <agg_blur.h>

namespace Tovra
{
namespace
{
constexpr int widestBlur = 254; // the last radius in AGG's tables
constexpr int channels = 4;

// One sum for each channel.
struct Sums
{
    unsigned of[channels] = {};

    void add(const unsigned char* pixel, unsigned times = 1)
    {
        for (int c = 0; c < channels; ++c)
            of[c] += pixel[c] * times;
    }

    void take(const unsigned char* pixel)
    {
        for (int c = 0; c < channels; ++c)
            of[c] -= pixel[c];
    }

    void add(const Sums& other)
    {
        for (int c = 0; c < channels; ++c)
            of[c] += other.of[c];
    }

    void take(const Sums& other)
    {
        for (int c = 0; c < channels; ++c)
            of[c] -= other.of[c];
    }
};

// A stack blur: the weights of the pixels within the radius form a triangle. To move the weighted sum on by
// one pixel, the sum of the pixels whose weight shrinks is subtracted, and the sum of those whose weight
// grows is added. A ring buffer keeps the original pixels, since the line is overwritten in place.
class StackBlur
{
public:
    explicit StackBlur(int ofRadius)
        : radius(ofRadius),
          length(2 * ofRadius + 1),
          factor(agg::stack_blur_tables<int>::g_stack_blur8_mul[ofRadius]),
          shift(agg::stack_blur_tables<int>::g_stack_blur8_shr[ofRadius])
    {
    }

    // Blurs pixels in place that lie step bytes apart; there is at least one.
    void line(unsigned char* first, int pixels, std::ptrdiff_t step)
    {
        const unsigned char* const last = first + (pixels - 1) * step;
        const unsigned char* next = first;
        Sums all, incoming, outgoing;
        for (int i = 0; i <= radius; ++i)
        {
            all.add(keep(i, next), unsigned(i) + 1);
            outgoing.add(next);
        }
        for (int i = 1; i <= radius; ++i)
        {
            next += next == last ? 0 : step;
            all.add(keep(i + radius, next), unsigned(radius + 1 - i));
            incoming.add(next);
        }

        int middle = radius;
        for (unsigned char* at = first; pixels > 0; --pixels, at += step)
        {
            for (int c = 0; c < channels; ++c)
                at[c] = static_cast<unsigned char>((all.of[c] * factor) >> shift);
            all.take(outgoing);
            const int oldest = middle + 1 + radius < length ? middle + 1 + radius : middle - radius;
            outgoing.take(ring[oldest]);
            next += next == last ? 0 : step;
            incoming.add(keep(oldest, next));
            all.add(incoming);
            middle = middle + 1 < length ? middle + 1 : 0;
            outgoing.add(ring[middle]);
            incoming.take(ring[middle]);
        }
    }

private:
    const unsigned char* keep(int place, const unsigned char* pixel)
    {
        std::copy_n(pixel, channels, ring[place]);
        return pixel;
    }

    const int radius;
    const int length;
    const unsigned factor;
    const unsigned shift;
    unsigned char ring[2 * widestBlur + 1][channels];
};

int wholeRadius(double radius)
{
    return int(std::clamp(radius + 0.5, 0.0, double(widestBlur)));
}
}

void PelmoAGG::blurRect(double x1, double y1, double x2, double y2, double radiusX, double radiusY)
{
    const Image& picture = pipelines->picture;
    const PixelGrid& grid = pipelines->grid;
    pipelines->wasUnclipped = true;
    if (!picture.getPixels() || !areNumbers(x1, y1, x2, y2, radiusX, radiusY))
        return;
    const int left = std::max(wholePixels(grid.toPixels(x1)), 0);
    const int top = std::max(wholePixels(grid.toPixels(y1)), 0);
    const int right = std::min(wholePixels(grid.toPixels(x2)), int(picture.getWidth()) - 1);
    const int bottom = std::min(wholePixels(grid.toPixels(y2)), int(picture.getHeight()) - 1);
    if (right <= left || bottom <= top)
        return;
    const int across = wholeRadius(grid.toPixels(radiusX));
    const int down = wholeRadius(grid.toPixels(radiusY));
    if (StackBlur blur(across); across > 0)
        for (int y = top; y <= bottom; ++y)
            blur.line(picture.row(y) + std::ptrdiff_t(left) * channels, right - left + 1, channels);
    if (StackBlur blur(down); down > 0)
        for (int x = left; x <= right; ++x)
            blur.line(picture.row(top) + std::ptrdiff_t(x) * channels, bottom - top + 1, picture.getStride());
}
}
