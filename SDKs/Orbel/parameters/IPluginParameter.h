// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter as a host sees it: a name, a unit, and a position from 0 to 1.
#pragma once

namespace Core
{
class IString;
}

namespace Orbel
{
class IPluginParameter
{
public:
    virtual ~IPluginParameter() = default;

    virtual long getParameterID() const = 0;
    virtual const char* getParameterName() const = 0;
    virtual const char* getScaleUnit() const = 0;
    virtual double getNormalized() const = 0;
    virtual void setNormalized(double position) = 0;
    virtual void getStringFromValue(double value, Core::IString* text) = 0;
    virtual void setValueFromString(const Core::IString* text) = 0;
    virtual double normalize(double value) const = 0;
    virtual double denormalize(double position) const = 0;
    virtual long getParameterFlags() const = 0;
    virtual double getDefaultValueNormalized() const = 0;
};
}
