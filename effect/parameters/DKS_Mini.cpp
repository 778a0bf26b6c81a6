// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/parameters/DKS_Mini.h"

namespace DKS_Mini
{
using Unit = Orbel::ParameterUnitType;

// "TEMPO" starts below its minimum on purpose: setup clamps the value to 10 and nothing resets it.
// clang-format off
const Orbel::ParameterPropertySetup ps_plain[kNumParameters] = {
    // id, long name, short name, minimum, maximum, value, default, automatable, curve, unit, parameter id
    {"TRIGGERSENSE", "Trigger Sense",               "SENSE",           0.0039f,    2.0f, 0.125f, 0.125f, true,  0.0f, Unit::GainInDecibels,  0},
    {"ATTACKTIME",   "Attack Time",                 "ATKTIME",            0.0f,  300.0f,   0.0f,   0.0f, true,  0.0f,   Unit::Milliseconds,  1},
    {"RELEASTIME",   "Release Time",                "RLSTIME",           20.0f,  500.0f, 450.0f, 450.0f, true,  0.0f,   Unit::Milliseconds,  2},
    {"HOLDTIME",     "Hold Time",                   "HLDTIME",            1.0f,  200.0f,  20.0f,  20.0f, true,  0.0f,   Unit::Milliseconds,  3},
    {"ATTACKCRUVE",  "Attack Curve",                "ATKCRV",            -8.0f,    8.0f,   0.0f,   0.0f, true,  0.0f, Unit::BipolarPercent,  4},
    {"RELEASECURVE", "Release Curve",               "RLSCRV",            -8.0f,    8.0f,   0.0f,   0.0f, true,  0.0f, Unit::BipolarPercent,  5},
    {"STRENGTH",     "Strength",                    "STRNGTH",            0.0f,    1.0f,   1.0f,   1.0f, true,  0.0f,  Unit::SignedPercent,  6},
    {"BYPASS",       "Bypass Sidechain",            "BYPASS",             0.0f,    1.0f,   0.0f,   0.0f, true,  0.0f,         Unit::Switch,  7},
    {"LINKTIMES",    "Fixed Envelope Time summary", "LINKED TIMES",       0.0f,    1.0f,   1.0f,   1.0f, false, 0.0f,         Unit::Switch,  8},
    {"ENVHOLD",      "ENVHOLD",                     "USE ENV HOLD",       0.0f,    1.0f,   0.0f,   0.0f, true,  0.0f,         Unit::Switch,  9},
    {"CLICKFILTER",  "CLICKFILTER",                 "CLICKFILTER",        0.0f,    1.0f,  0.25f,  0.25f, true,  0.0f,  Unit::SignedPercent, 10},
    {"BPMSCALE",     "BPMSCALE",                    "NON PUBLIC PROP",    0.0f,    1.0f,   1.0f,   1.0f, false, 0.0f,         Unit::Switch, 11},
    {"TRIGGERSHIFT", "TRIGGERSHIFT",                "NON PUBLIC PROP",   -1.0f,    1.0f,   0.0f,   0.0f, false, 0.0f,  Unit::SignedPercent, 12},
    {"TEMPO",        "TEMPO",                       "NON PUBLIC PROP",   10.0f, 1000.0f,   1.0f,   1.0f, false, 0.0f,   Unit::Milliseconds, 13},
    {"TIME_OFFSET",  "Time Offset",                 "NON PUBLIC PROP",    0.0f,    1.0f,   0.0f,   0.0f, false, 0.0f,  Unit::SignedPercent, 14},
};
// clang-format on
}
