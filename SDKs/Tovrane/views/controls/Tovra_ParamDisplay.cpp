// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/Tovra_ParamDisplay.h"

#include "Orbel/parameters/ParameterProperty.h"

#include <cmath>
#include <cstring>

namespace Tovra
{
Tovra_ParamDisplay::Tovra_ParamDisplay(const CTextLabelInfo& info)
    : CParamDisplay(info), rendersUnits(info.renderUnits), rendersUnitsBelow(info.renderUnitsInSecondLine)
{
    setAttachedProperty(info.attachedProperty);
}

bool Tovra_ParamDisplay::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "Tovra_ParamDisplay") == 0) || CParamDisplay::isTypeOf(name);
}

void Tovra_ParamDisplay::setRenderUnits(bool flag)
{
    rendersUnits = flag;
    setDirty(true);
}

void Tovra_ParamDisplay::setRenderUnitsInSecondLine(bool flag)
{
    rendersUnitsBelow = flag;
    setDirty(true);
}

std::string Tovra_ParamDisplay::getText() const
{
    return textOfProperty(true, rendersUnits && !rendersUnitsBelow, rendersUnitsBelow);
}

// The text is made when it is drawn, on the window's thread.
void Tovra_ParamDisplay::parameterChanged(Orbel::ParameterProperty* property)
{
    if (property != nullptr && property == getAttachedProperty())
        return setDirty(true);
    CParamDisplay::parameterChanged(property);
}

void Tovra_ParamDisplay::draw(CDrawContext* context)
{
    setDirty(false);
    drawBack(context);
    const auto onPixel = [](double at) { return std::floor(at) + 0.5; };
    CRect rect(onPixel(size.left), onPixel(size.top), onPixel(size.right), onPixel(size.bottom));
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (!rendersUnitsBelow || property == nullptr)
        return drawText(context, getText(), rect);
    const double middle = std::floor(rect.center().y) + 0.5;
    drawText(context, getText(), CRect(rect.left, rect.top, rect.right, middle));
    drawText(context, property->getUnitName(), CRect(rect.left, middle, rect.right, rect.bottom));
}
}
