// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/Tovra_ParamDisplay.h"

#include "CORE/CString.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/parameters/ParameterText.h"

#include <cmath>
#include <cstring>

namespace Tovra
{
Tovra_ParamDisplay::Tovra_ParamDisplay(const CTextLabelInfo& info)
    : CParamDisplay(info, info.style),
      rendersUnits(info.renderUnits),
      rendersUnitsBelow(info.renderUnitsInSecondLine)
{
    setHoriAlign(info.alignment);
    if (info.font != nullptr)
        setFont(info.font, info.fontSize);
    setFontColor(info.textColor);
    setFrameColor(info.frameColor);
    setTransparency(info.transparency);
    setMouseEnabled(info.mouseEnabled);
    if (!info.mouseEnabled)
        setMouseableArea(CRect());
    Tovra_ParamDisplay::setAttachedProperty(info.attachedProperty);
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
    char text[Orbel::kParameterTextSize] = {};
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (property == nullptr)
        return text;
    if (property->getUnitType() == Orbel::ParameterUnitType::Text)
        Core::CString(text, sizeof text).set(static_cast<const char*>(property->getDataPointer()));
    else
        Orbel::renderPropertyText(property, text, true, rendersUnits && !rendersUnitsBelow,
                                  rendersUnitsBelow);
    return text;
}

void Tovra_ParamDisplay::setAttachedProperty(Orbel::ParameterProperty* property)
{
    if (Orbel::ParameterProperty* const former = getAttachedProperty())
        former->ForgetListener(this);
    CParamDisplay::setAttachedProperty(property);
    if (property != nullptr)
        property->AddListener(this, true);
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
