// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/scope/CNewScopeRenderer.h"

#include "Tovrane/draw/AggColor.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
void CNewScopeRenderer::initialize(IScopeDataProvider* provider, int points,
                                   const std::vector<layer_style_t>& styles)
{
    source = provider;
    numPoints = std::max(points, 1);
    layers.clear();
    fetched.clear();
    if (source == nullptr)
        return;
    source->setNumDataPoints(numPoints);
    layers.resize(size_t(source->getNumDataLayer()));
    fetched.resize(layers.size(), std::vector<Point>(size_t(numPoints)));
    for (size_t i = 0; i < layers.size(); ++i)
    {
        layers[i].data.resize(size_t(numPoints));
        layers[i].style = i < styles.size() ? styles[i] : layer_style_t();
    }
}

void CNewScopeRenderer::setLayerEnabled(int layer, bool isOn)
{
    if (layer >= 0 && size_t(layer) < layers.size())
        layers[size_t(layer)].isEnabled = isOn;
}

static float shownValue(float value)
{
    return std::isnan(value) ? 0.0f : std::clamp(value, -1.0f, 1.0f);
}

bool CNewScopeRenderer::copyPoints()
{
    if (source == nullptr || !source->tryLock())
        return false;
    for (size_t i = 0; i < layers.size(); ++i)
        source->getScopeData(int(i), fetched[i].data(), numPoints);
    source->unlock();
    for (std::vector<Point>& layer : fetched)
        for (Point& point : layer)
            point = {shownValue(point.min), shownValue(point.max)};
    return true;
}

// The line to the next point, and the miter of a stroke where that line ends, reach into the columns beside
// the one that changed.
std::vector<CNewScopeRenderer::Columns> CNewScopeRenderer::fetch()
{
    constexpr int reach = 6, gap = 16; // ranges that are this close are one
    std::vector<Columns> changed;
    if (!copyPoints())
        return changed;
    for (int column = 0; column < numPoints; ++column)
    {
        bool differs = false;
        for (size_t i = 0; i < layers.size(); ++i)
            differs = differs || fetched[i][size_t(column)] != layers[i].data[size_t(column)];
        if (!differs)
            continue;
        const Columns here{std::max(column - reach, 0), std::min(column + reach + 1, numPoints)};
        if (changed.empty() || here.first > changed.back().last + gap)
            changed.push_back(here);
        else
            changed.back().last = here.last;
    }
    for (size_t i = 0; i < layers.size(); ++i)
        layers[i].data.swap(fetched[i]);
    return changed;
}

void CNewScopeRenderer::renderScope(CDrawContext* context, const CRect& rect)
{
    for (size_t i = 0; i < layers.size(); ++i)
        if (layers[i].isEnabled)
            drawLayer(context, rect, int(i));
}

static float heightOf(float value, float centre, float amplitude)
{
    return centre - value * amplitude + 0.5f;
}

// Only the columns in the clip, and some on either side, so that where the band is cut off is not seen.
void CNewScopeRenderer::drawLayer(CDrawContext* context, const CRect& rect, int layer)
{
    constexpr double margin = 10.0;
    const Layer& drawn = layers[size_t(layer)];
    const CRect clip = context->getClipRect();
    const int first = std::max(int(std::max(clip.left - rect.left - margin, 0.0)), 0);
    const int last = int(std::min(clip.right - rect.left + margin, double(numPoints - 1)));
    if (last < first)
        return;
    context->setLineWidth(double(drawn.style.lineWidth));
    context->setFrameColor(drawn.style.frameColor);
    context->setFillColor(drawn.style.fillColor);

    const float centre = float((rect.top + rect.bottom) / 2.0), amplitude = float(rect.getHeight() / 2.0);
    const auto x = [&rect](int column) { return float(rect.left + column); };
    CDrawPath path(context);
    const auto top = [&](int i) { return heightOf(drawn.data[size_t(i)].max, centre, amplitude); };
    const auto bottom = [&](int i) { return heightOf(drawn.data[size_t(i)].min, centre, amplitude); };
    path.moveTo(x(first), top(first));
    for (int i = first; i <= last; ++i)
        path.lineTo(x(i), top(i));
    if (drawn.style.drawStyle != kStroked)
    {
        const CPoint offset = context->getOffset();
        const double left = rect.left + offset.x;
        const CColor* const colors = drawn.style.gradientColors;
        context->getAGGRenderer()->fillLinearGradient(
            left, rect.top + offset.y, left, rect.bottom + offset.y, aggColorFromCColor(colors[0]),
            aggColorFromCColor(colors[1]), aggColorFromCColor(colors[2]));
    }
    for (int i = last; i >= first; --i)
        path.lineTo(x(i), bottom(i));
    path.closePath();
    path.finish(drawn.style.drawStyle, true);
}
}
