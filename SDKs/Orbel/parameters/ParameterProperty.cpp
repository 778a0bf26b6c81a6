// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterProperty.h"

#include "CORE/ThreadCheck.h"
#include "Orbel/parameters/ParameterCurve.h"
#include "Orbel/parameters/WholeNumber.h"

#include <algorithm>
#include <cmath>

namespace Orbel
{
namespace
{
const char* unitNameOf(ParameterUnitType type)
{
    switch (type)
    {
    case ParameterUnitType::Milliseconds:
        return "ms";
    case ParameterUnitType::SignedPercent:
    case ParameterUnitType::PlainPercent:
        return "%";
    case ParameterUnitType::GainInDecibels:
    case ParameterUnitType::PlainDecibels:
        return "dB";
    case ParameterUnitType::Hertz:
        return "Hz";
    default:
        return "";
    }
}

void storeNumber(Core::Relaxed<float>& word, float number)
{
    if (!std::isnan(number))
        word = number;
}
}

ParameterProperty::ParameterProperty()
{
    unitName.set(unitNameOf(unitType));
}

ParameterProperty& ParameterProperty::operator=(const ParameterProperty& other)
{
    if (this == &other)
        return *this;
    parameterId = other.parameterId;
    idText.set(other.getID());
    longName.set(other.getParamLongName());
    shortName.set(other.getParamShortName());
    minimum = other.minimum;
    maximum = other.maximum;
    setUnitType(other.unitType);
    curve = other.curve;
    automatable = other.automatable;
    defaultValue = other.defaultValue;
    setValue(other.getCurrentValue());
    return *this;
}

void ParameterProperty::setup(const ParameterPropertySetup* row)
{
    parameterId = row->parameterId;
    idText.set(row->id.c_str());
    longName.set(row->longName.c_str());
    shortName.set(row->shortName.c_str());
    storeNumber(maximum, row->maximum);
    storeNumber(minimum, row->minimum);
    setUnitType(row->unitType);
    storeNumber(curve, row->curve);
    automatable = row->automatable;
    storeNumber(defaultValue, row->defaultValue);
    setValue(row->value);
}

void ParameterProperty::setUnitType(ParameterUnitType type)
{
    unitType = type;
    unitName.set(unitNameOf(type));
}

float ParameterProperty::clamped(float realValue) const
{
    const float low = minimum, high = maximum;
    return low > high ? std::clamp(realValue, high, low) : std::clamp(realValue, low, high);
}

double ParameterProperty::normalize(double realValue) const
{
    const float low = minimum, high = maximum;
    const float unit = (float(realValue) - low) / (high - low);
    return unbendUnit(unit, curve);
}

double ParameterProperty::denormalize(double position) const
{
    return valueAt(float(position));
}

float ParameterProperty::valueAt(float position) const
{
    const float low = minimum, high = maximum;
    return low + (high - low) * bendPosition(position, curve);
}

void ParameterProperty::store(ParameterChangeListener* writer, float newValue)
{
    value = newValue;
    listeners.notify(this, writer);
}

void ParameterProperty::setValue(ParameterChangeListener* writer, float newValue)
{
    if (!std::isnan(newValue))
        store(writer, clamped(newValue));
}

void ParameterProperty::setValue_Normalized(ParameterChangeListener* writer, float position)
{
    if (std::isnan(position))
        return;
    const float mapped = valueAt(std::clamp(position, 0.0f, 1.0f));
    if (std::isfinite(mapped)) // a curve far out divides by zero
        store(writer, mapped);
}

bool ParameterProperty::replaceValue(float expected, float newValue, ParameterChangeListener* writer)
{
    if (std::isnan(newValue) || !value.replace(expected, clamped(newValue)))
        return false;
    notifyListeners(writer);
    return true;
}

void ParameterProperty::setDefaultValue(float newDefault)
{
    if (!std::isnan(newDefault))
        defaultValue = clamped(newDefault);
}

void ParameterProperty::setMin(float bound)
{
    setBound(minimum, bound);
}

void ParameterProperty::setMax(float bound)
{
    setBound(maximum, bound);
}

void ParameterProperty::setBound(Core::Relaxed<float>& bound, float newBound)
{
    if (std::isnan(newBound) || newBound == bound)
        return;
    bound = newBound;
    const float now = value;
    if (clamped(now) != now)
        setValue(clamped(now));
}

void ParameterProperty::setCurve(float coefficient)
{
    if (std::isnan(coefficient))
        return;
    curve = coefficient;
    notifyListeners();
}

int ParameterProperty::getCurrentValue_asINT() const
{
    return wholeNumber(value);
}

void ParameterProperty::AddListener(ParameterChangeListener* listener, bool notifyNow)
{
    Core::checkWindowThread("ParameterProperty::AddListener");
    listeners.add(listener);
    if (listener && notifyNow)
        listener->parameterChanged(this);
}

void ParameterProperty::ForgetListener(ParameterChangeListener* listener)
{
    Core::checkWindowThread("ParameterProperty::ForgetListener");
    listeners.forget(listener);
}

void ParameterProperty::setContextRenderer(ParameterContextRenderer renderer, void* data)
{
    contextRenderer = renderer;
    dataPointer = data;
}

void ParameterProperty::setValueFromString(const Core::IString*) {}
}
