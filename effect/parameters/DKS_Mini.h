// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of the effect, in the order of their creation: hosts remember them by that order, files
// by their id texts. Both are a promise; that some ids are misspelled is part of it.
//
// Constant after the bundle was loaded. Each row's parameter id is its index.
#pragma once

#include "Orbel/parameters/ParameterPropertySetup.h"

namespace DKS_Mini
{
// Parameter ids.
enum
{
    kTriggerSense = 0,
    kAttackTime = 1,
    kReleaseTime = 2,
    kHoldTime = 3,
    kAttackCurve = 4,
    kReleaseCurve = 5,
    kStrength = 6,
    kBypass = 7,
    kLinkTimes = 8,
    kEnvHold = 9,
    kClickFilter = 10,
    kBPMScale = 11,
    kTriggerShift = 12,
    kTempo = 13,
    kTimeOffset = 14,
    kNumParameters = 15
};

extern const Orbel::ParameterPropertySetup ps_plain[kNumParameters];
}
