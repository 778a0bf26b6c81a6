// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the points of a scope: each layer is a closed band between its maxima and its minima, one column of
// units for each point, later layers on top.
//
// fetch copies the points when the window is idle and tells which columns differ; renderScope draws the copy,
// so that all parts of one picture show the same moment. [window thread]
#pragma once

#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/scope/IScopeDataProvider.h"

#include <vector>

namespace Tovra
{
class CNewScopeRenderer
{
public:
    struct layer_style_t
    {
        CColor frameColor{255, 255, 255, 255};
        CColor fillColor{40, 40, 40, 255};
        CColor gradientColors[3] = {fillColor, fillColor, fillColor}; // of a filled band: top, middle, bottom
        float lineWidth = 0.0f;
        CDrawStyle drawStyle = kStroked;
    };

    CNewScopeRenderer() = default;
    CNewScopeRenderer(const CNewScopeRenderer&) = delete;
    CNewScopeRenderer& operator=(const CNewScopeRenderer&) = delete;
    virtual ~CNewScopeRenderer() = default;

    // Shows the provider's layers with so many points, which the provider has from now on; a layer beyond the
    // styles has the default one. Null for no layers. The provider is not owned.
    void initialize(IScopeDataProvider* provider, int points, const std::vector<layer_style_t>& styles);
    // A layer that is not enabled is not drawn.
    void setLayerEnabled(int layer, bool isOn);

    // Columns [first, last).
    struct Columns
    {
        int first;
        int last;
    };
    // Copies the points, unless the provider is being written just now. Columns that look different since the
    // last call are put together to few ranges, from left to right.
    std::vector<Columns> fetch();
    // Draws what was fetched last, with the first column at the left edge of the rectangle, and a value of 1
    // at its upper edge, -1 at its lower one.
    void renderScope(CDrawContext* context, const CRect& rect);

protected:
    virtual void drawLayer(CDrawContext* context, const CRect& rect, int layer);

private:
    using Point = IScopeDataProvider::scope_data_point_t;
    struct Layer
    {
        std::vector<Point> data;
        layer_style_t style;
        bool isEnabled = true;
    };

    bool copyPoints();

    IScopeDataProvider* source = nullptr;
    int numPoints = 0;
    std::vector<Layer> layers;
    std::vector<std::vector<Point>> fetched; // in place of the layers' data, once it is complete
};
}
