// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/Wrapper/VST3/OrbelVST3Parameter.h"

#include "CORE/Numbers.h"
#include "HostSDK/VST3/Text.h"
#include "Orbel/parameters/ParameterText.h"

#include <cmath>
#include <cstdio>

namespace Orbel
{
using namespace Steinberg::Vst;

OrbelVST3Parameter::OrbelVST3Parameter(ParameterProperty* shown, ParamID id, bool isProgramChange,
                                       Steinberg::int32 stepCount, bool isBypass)
    : property(shown)
{
    info.id = id;
    info.stepCount = stepCount;
    copyText(property->getParamLongName(), info.title);
    copyText(property->getParamShortName(), info.shortTitle);
    info.defaultNormalizedValue = isProgramChange || isBypass ? 0.0 : property->getDefaultValue_normalized();
    info.flags = property->isAutomateable() ? ParameterInfo::kCanAutomate : 0;
    if (isProgramChange)
        info.flags = ParameterInfo::kIsList | ParameterInfo::kIsProgramChange;
    if (isBypass)
        info.flags |= ParameterInfo::kIsBypass;
}

bool OrbelVST3Parameter::setNormalized(ParamValue position)
{
    if (!editing)
        property->setValue_Normalized(float(position));
    return true;
}

void OrbelVST3Parameter::toString(ParamValue position, String128 text) const
{
    char buffer[kParameterTextSize] = "";
    renderPropertyTextValue(property, float(toPlain(position)), buffer, true, true, true);
    copyText(buffer, text);
}

bool OrbelVST3Parameter::fromString(const TChar* text, ParamValue& position) const
{
    const auto number = Core::findNumber(textOf(text).c_str());
    if (!number || !std::isfinite(*number))
        return false;
    const float value = float(*number);
    position = property->normalize(value);
    property->setValue(value);
    return true;
}
}
