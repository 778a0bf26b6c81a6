// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/BypassParameter.h"

#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <strings.h>

namespace Orbel
{
bool isBypass(const ParameterProperty& property)
{
    return strcasecmp(property.getID(), "bypass") == 0 || strcasecmp(property.getID(), "kbypass") == 0;
}

ParameterProperty* findBypassParameter(OrbelOS& effect)
{
    for (int i = 0; i < effect.getParameterCount_automateable(); ++i)
    {
        ParameterProperty* const property = effect.getParameterProperty_automateable(i);
        if (property && isBypass(*property))
            return property;
    }
    return nullptr;
}
}
