// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGGPipelines.h"

namespace Tovra
{
// Mixes two colours in steps of 1/256. The shift rounds down, so a decreasing channel is rounded towards c2.
static agg::rgba8 mixed(const agg::rgba8& c1, const agg::rgba8& c2, int k)
{
    const auto channel = [k](int from, int to) { return unsigned(from + (((to - from) * k) >> 8)); };
    return {channel(c1.r, c2.r), channel(c1.g, c2.g), channel(c1.b, c2.b), channel(c1.a, c2.a)};
}

// Gradients of that size look flat or like hard edges; beyond it the spans' 24.8 fixed point would overflow.
constexpr double farthestGradient = 100000.0;
constexpr double steepestProfile = 1000.0;

void PelmoAGG::Pipelines::setGradient(double x1, double y1, double x2, double y2)
{
    const auto near = [](double v) { return std::clamp(v, -farthestGradient, farthestGradient); };
    x1 = grid.toPixels(x1);
    y1 = grid.toPixels(y1);
    x2 = grid.toPixels(x2);
    y2 = grid.toPixels(y2);
    const double dx = near(x2) - near(x1);
    const double dy = near(y2) - near(y1);
    fillMatrix.reset();
    fillMatrix *= agg::trans_affine_rotation(std::atan2(dy, dx));
    fillMatrix *= agg::trans_affine_translation(near(x1), near(y1));
    fillMatrix.invert();
    fillDistance = std::sqrt(dx * dx + dy * dy);
    fillIsGradient = true;
    fillColor = agg::rgba8(0, 0, 0, 255);
}

void PelmoAGG::fillLinearGradient(double x1, double y1, double x2, double y2, agg::rgba8 c1, agg::rgba8 c2,
                                  double profile)
{
    if (!areNumbers(x1, y1, x2, y2, profile))
        return;
    Pipelines& p = *pipelines;
    c1 = p.scaledByMaster(c1);
    c2 = p.scaledByMaster(c2);
    const int half = int(std::clamp(profile, -steepestProfile, steepestProfile) * 127.0);
    const int start = 128 - half;
    const int stop = std::max(128 + half, start + 1);
    agg::rgba8 color = c1;
    for (int i = 0; i < 256; ++i)
    {
        if (i >= start && i < stop)
            color = mixed(c1, c2, int(std::floor((i - start) * 256.0 / (stop - start) + 0.5)));
        p.fillTable[unsigned(i)] = color;
    }
    p.setGradient(x1, y1, x2, y2);
}

void PelmoAGG::fillLinearGradient(double x1, double y1, double x2, double y2, agg::rgba8 c1, agg::rgba8 c2,
                                  agg::rgba8 c3)
{
    if (!areNumbers(x1, y1, x2, y2))
        return;
    Pipelines& p = *pipelines;
    c1 = p.scaledByMaster(p.scaledByMaster(c1));
    c3 = p.scaledByMaster(c3);
    for (int i = 0; i < 128; ++i)
    {
        const int k = int(std::floor(i / 127.0 * 256.0 + 0.5));
        p.fillTable[unsigned(i)] = mixed(c1, c2, k);
        p.fillTable[unsigned(i) + 128] = mixed(c2, c3, k);
    }
    p.setGradient(x1, y1, x2, y2);
}

const agg::rgba8* PelmoAGG::fillGradientTable() const
{
    return &pipelines->fillTable[0];
}
}
