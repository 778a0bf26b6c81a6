// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of the older two-band product, which the effect never creates: the key by which states
// and presets of that product are translated.
//
// Constant after the bundle was loaded. Each row's parameter id is its index.
#pragma once

#include "Orbel/parameters/ParameterPropertySetup.h"

namespace DKS
{
constexpr int kNumParameters = 45;
constexpr int kNumChunkParameters = 29; // the first of them: those that a chunk of that product holds

extern const Orbel::ParameterPropertySetup ps_plain[kNumParameters];
}
