// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/panel/CToggleDisplayDial.h"

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/views/controls/DisplayColors.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Tovra
{
namespace
{
// Within a row of the panel.
constexpr double ringLeft = 24.0;
constexpr double ringTop = 3.0;
constexpr double ringSide = 24.0;
constexpr double textLeft = 55.0;
constexpr double lineHeight = 12.0;
}

CToggleDisplayDial::CToggleDisplayDial(const CRect& rect, Orbel::ParameterProperty* property,
                                       const char* shownLabel, bool isOfCurve)
    : Tovra_AnimKnob(rect, nullptr, 0, 1, rect.getHeight(), nullptr, CPoint(), property),
      label(shownLabel),
      isCurve(isOfCurve)
{
}

bool CToggleDisplayDial::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CToggleDisplayDial") == 0) ||
           Tovra_AnimKnob::isTypeOf(name);
}

CRect CToggleDisplayDial::hitRect() const
{
    const double left = size.left + ringLeft, top = size.top + ringTop;
    return {left, top, left + ringSide, top + ringSide};
}

bool CToggleDisplayDial::hitTest(const CPoint& where, long)
{
    return hitCircular(hitRect(), where);
}

void CToggleDisplayDial::drawArc(CDrawContext* context, const CRect& ring)
{
    constexpr float sweep = 290.0f;
    constexpr float start = 270.0f - sweep / 2.0f; // open at the bottom
    context->setLineWidth(2.5);
    context->setFrameColor(kDisplayColor2);
    context->drawArc(ring, start, sweep, kStroked);
    context->setFrameColor(kDisplayColor5);
    const float from = isCurve ? 0.5f : 0.0f;
    const float to = value;
    if (from != to)
        context->drawArc(ring, start + sweep * std::min(from, to), sweep * std::fabs(to - from), kStroked);
}

void CToggleDisplayDial::draw(CDrawContext* context)
{
    const CRect ring = hitRect();
    drawArc(context, {ring.left + 2.0, ring.top + 2.0, ring.right - 2.0, ring.bottom - 2.0});
    const double left = size.left + textLeft;
    context->setFontColor(kDisplayColor5);
    context->setFont(kNormalFont, 9.0, 0);
    context->drawString(label, {left, ring.top, size.right, ring.top + lineHeight}, true, kTextLeft);
    context->setFont(kNormalFont, 10.0, 0);
    context->drawString(textOfProperty(true, true, true).c_str(),
                        {left, ring.top + lineHeight, size.right, ring.top + 2.0 * lineHeight}, true,
                        kTextLeft);
    drawFocus(context);
    setDirty(false);
}
}
