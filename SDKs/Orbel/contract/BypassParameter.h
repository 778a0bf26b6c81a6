// SPDX-License-Identifier: GPL-3.0-or-later
// Which of an effect's parameters is its bypass, as hosts have a switch of their own for it. [window thread]
#pragma once

namespace Orbel
{
class OrbelOS;
class ParameterProperty;

// The parameter's id text is "bypass" or "kbypass", in upper or lower case.
bool isBypass(const ParameterProperty& property);

// The first automatable parameter that is a bypass; null if the effect has none.
ParameterProperty* findBypassParameter(OrbelOS& effect);
}
