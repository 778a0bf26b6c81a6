// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CDrawPath.h"

#include "Tovrane/draw/PelmoAGG.h"

namespace Tovra
{
CDrawPath::CDrawPath(CDrawContext* context, unsigned int withAlpha)
    : offsetX(context->getOffset().x),
      offsetY(context->getOffset().y),
      renderer(context->getAGGRenderer()),
      alpha(withAlpha)
{
    if (renderer)
        renderer->resetPath();
}

void CDrawPath::moveTo(float x, float y)
{
    if (renderer)
        renderer->moveTo(x + offsetX, y + offsetY);
}

void CDrawPath::lineTo(float x, float y)
{
    if (renderer)
        renderer->lineTo(x + offsetX, y + offsetY);
}

void CDrawPath::closePath()
{
    if (renderer)
        renderer->closePolygon();
}

void CDrawPath::finish(CDrawStyle style, bool)
{
    if (!renderer)
        return;
    const double saved = renderer->masterAlpha();
    renderer->masterAlpha(alpha / 255.0);
    if (style == kFilled)
        renderer->drawPath(kFillOnly);
    else
        renderer->drawPath(style == kStroked ? kStrokeOnly : kFillAndStroke);
    renderer->masterAlpha(saved);
}
}
