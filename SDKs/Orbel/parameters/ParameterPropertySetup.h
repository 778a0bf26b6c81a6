// SPDX-License-Identifier: GPL-3.0-or-later
// One row of a parameter table: everything that a ParameterProperty is configured from.
#pragma once

#include "Orbel/parameters/ParameterUnitType.h"

#include <string>

namespace Orbel
{
struct ParameterPropertySetup
{
    std::string id; // the key in chunks and in lookups: never changes once released
    std::string longName;
    std::string shortName;
    float minimum = 0.0f; // at normalised 0
    float maximum = 1.0f; // at normalised 1; may lie below the minimum
    float value = 0.0f;
    float defaultValue = 0.0f;
    bool automatable = true;
    float curve = 0.0f; // 0 is linear; above 0 the lower part of the travel is fine
    ParameterUnitType unitType = ParameterUnitType::SignedPercent;
    std::int32_t parameterId = 0;
};
}
