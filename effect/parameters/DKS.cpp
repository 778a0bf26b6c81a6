// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/parameters/DKS.h"

namespace DKS
{
using Unit = Orbel::ParameterUnitType;

// "EQ1FREQ" alone has a default other than its value.
// clang-format off
const Orbel::ParameterPropertySetup ps_plain[kNumParameters] = {
    // id, long name, short name, minimum, maximum, value, default, automatable, curve, unit, parameter id
    {"SPLIT_FREQ",      "Split Frequency",             "SPLITFREQ",         22.0f, 22050.0f, 3041.0f, 3041.0f, true,  25.0f,          Unit::Hertz,  0},
    {"TRIGGERSENSE",    "Trigger Sense",               "SENSE",           0.0039f,     2.0f,  0.125f,  0.125f, true,  0.0f,  Unit::GainInDecibels,  1},
    {"ATTACKTIME",      "Low Band Attack Time",        "ATKTIME LOW",        0.0f,   300.0f,    0.0f,    0.0f, true,  0.0f,    Unit::Milliseconds,  2},
    {"RELEASTIME",      "Low Band Release Time",       "RLSTIME LOW",       20.0f,   500.0f,  450.0f,  450.0f, true,  0.0f,    Unit::Milliseconds,  3},
    {"HOLDTIME",        "Low Band Hold Time",          "HLDTIME LOW",        1.0f,   200.0f,   20.0f,   20.0f, true,  0.0f,    Unit::Milliseconds,  4},
    {"ATTACKCRUVE",     "Low Band Attack Curve",       "ATKCRV LOW",        -8.0f,     8.0f,    0.0f,    0.0f, true,  0.0f,  Unit::BipolarPercent,  5},
    {"RELEASECURVE",    "Low Band Release Curve",      "RLSCRV LOW",        -8.0f,     8.0f,    0.0f,    0.0f, true,  0.0f,  Unit::BipolarPercent,  6},
    {"STRENGTH",        "Low Band Strength",           "STRNGTH LOW",        0.0f,     1.0f,    1.0f,    1.0f, true,  0.0f,   Unit::SignedPercent,  7},
    {"LOCKTIME",        "Trigger Lock Time",           "LOCKTIME",          50.0f,   800.0f,  400.0f,  400.0f, true,  0.0f,    Unit::Milliseconds,  8},
    {"FILTERTYPE",      "FilterType",                  "FLTTYPE",            0.0f,     2.0f,    0.0f,    0.0f, true,  0.0f,         Unit::Integer,  9},
    {"EQ1FREQ",         "EQ1 Frequency",               "EQ1FREQ",           40.0f, 18000.0f,  440.0f, 4400.0f, true,  8.0f,           Unit::Hertz, 10},
    {"EQ1GAIN",         "EQ1 Gain",                    "EQ1GAIN",          -10.0f,    10.0f,    0.0f,    0.0f, true,  0.0f,   Unit::PlainDecibels, 11},
    {"EQ1WIDTH",        "EQ1 Bandwidth",               "EQ1WIDTH",           0.1f,     1.8f,    0.5f,    0.5f, true,  0.0f,   Unit::SignedPercent, 12},
    {"EQ2FREQ",         "EQ2 Frequency",               "EQ2FREQ",           40.0f, 18000.0f, 3500.0f, 3500.0f, true,  8.0f,           Unit::Hertz, 13},
    {"EQ2GAIN",         "EQ2 Gain",                    "EQ2GAIN",          -10.0f,    10.0f,    0.0f,    0.0f, true,  0.0f,   Unit::PlainDecibels, 14},
    {"EQ2WIDTH",        "EQ2 Bandwidth",               "EQ2WIDTH",           0.1f,     1.8f,    0.5f,    0.5f, true,  0.0f,   Unit::SignedPercent, 15},
    {"INPUTGAIN",       "Input Gain",                  "INPUTGAIN",          0.0f,     2.0f,    1.0f,    1.0f, true,  4.0f,  Unit::GainInDecibels, 16},
    {"OUTPUTGAIN",      "Output Gain",                 "OUTPUTGAIN",         0.0f,     2.0f,    1.0f,    1.0f, true,  4.0f,  Unit::GainInDecibels, 17},
    {"BYPASS",          "Bypass Sidechain",            "BYPASS",             0.0f,     1.0f,    0.0f,    0.0f, true,  0.0f,          Unit::Switch, 18},
    {"ATTACKTIME_HI",   "Highband Attack Time",        "ATCKTIME HI",        0.0f,   300.0f,    0.0f,    0.0f, true,  0.0f,    Unit::Milliseconds, 19},
    {"RELEASTIME_HI",   "Highband Release Time",       "RLSTIME HI",        20.0f,   500.0f,  450.0f,  450.0f, true,  0.0f,    Unit::Milliseconds, 20},
    {"HOLDTIME_HI",     "Highband Hold Time",          "HLDTIME HI",         1.0f,   200.0f,   20.0f,   20.0f, true,  0.0f,    Unit::Milliseconds, 21},
    {"ATTACKCRUVE_HI",  "Highband Attack Curve",       "ATKCRV HI",         -8.0f,     8.0f,    1.0f,    1.0f, true,  0.0f,  Unit::BipolarPercent, 22},
    {"RELEASECURVE_HI", "Highband Release Curve",      "RLSCRV HI",         -8.0f,     8.0f,    1.0f,    1.0f, true,  0.0f,  Unit::BipolarPercent, 23},
    {"STRENGTH_HI",     "Highband Strength",           "STRGNTH HI",         0.0f,     1.0f,    1.0f,    1.0f, true,  0.0f,   Unit::SignedPercent, 24},
    {"TRIGGERMODE",     "Trigger Mode",                "TRGMODE",            0.0f,     2.0f,    2.0f,    2.0f, true,  0.0f,         Unit::Integer, 25},
    {"LISTENTO",        "Listen To",                   "LSTNTO",             0.0f,     2.0f,    0.0f,    0.0f, true,  0.0f,         Unit::Integer, 26},
    {"LOWBANDVOL",      "Lowband Volume",              "LOWBNDVOL",          0.0f,     1.0f,    1.0f,    1.0f, true,  0.0f,  Unit::GainInDecibels, 27},
    {"HIGHBANDVOL",     "Highband Volume",             "HIGHBANDVOL",        0.0f,     1.0f,    1.0f,    1.0f, true,  0.0f,  Unit::GainInDecibels, 28},
    {"LINKTIMES",       "Fixed Envelope Time summary", "LINKED TIMES",       0.0f,     1.0f,    1.0f,    1.0f, false, 0.0f,          Unit::Switch, 29},
    {"LINKENVELOPES",   "Link Low & High Envelope",    "LINK ENVS",          0.0f,     1.0f,    0.0f,    0.0f, false, 0.0f,         Unit::Integer, 30},
    {"ENVHOLD",         "ENVHOLD",                     "USE ENV HOLD",       0.0f,     1.0f,    0.0f,    0.0f, true,  0.0f,          Unit::Switch, 31},
    {"CLICKFILTER",     "CLICKFILTER",                 "CLICKFILTER",        0.0f,     1.0f,   0.25f,   0.25f, true,  0.0f,   Unit::SignedPercent, 32},
    {"BPMSCALE",        "BPMSCALE",                    "NON PUBLIC PROP",    0.0f,     1.0f,    1.0f,    1.0f, false, 0.0f,          Unit::Switch, 33},
    {"TRIGGERSHIFT",    "TRIGGERSHIFT",                "NON PUBLIC PROP",   -1.0f,     1.0f,    0.0f,    0.0f, false, 0.0f,   Unit::SignedPercent, 34},
    {"DISPLAYSWITCH",   "DISPLAYSWITCH",               "NON PUBLIC PROP",    0.0f,    10.0f,    1.0f,    1.0f, false, 0.0f,         Unit::Integer, 35},
    {"SCOPEMODE",       "SCOPEMODE",                   "NON PUBLIC PROP",    0.0f,    10.0f,    2.0f,    2.0f, false, 0.0f,         Unit::Integer, 36},
    {"SCOPESOURCE",     "SCOPESOURCE",                 "NON PUBLIC PROP",    0.0f,    10.0f,    1.0f,    1.0f, false, 0.0f,         Unit::Integer, 37},
    {"FFTSOURCE",       "FFTSOURCE",                   "NON PUBLIC PROP",    0.0f,    10.0f,    1.0f,    1.0f, false, 0.0f,         Unit::Integer, 38},
    {"FFTPOS",          "FFTPOS",                      "NON PUBLIC PROP",    0.0f,    10.0f,    1.0f,    1.0f, false, 0.0f,         Unit::Integer, 39},
    {"LOWBANDENVPOS",   "LOWBANDENVPOS",               "NON PUBLIC PROP",    0.0f,    10.0f,    1.0f,    1.0f, false, 0.0f,         Unit::Integer, 40},
    {"HIGHBANDENVPOS",  "HIGHBANDENVPOS",              "NON PUBLIC PROP",    0.0f,    10.0f,    1.0f,    1.0f, false, 0.0f,         Unit::Integer, 41},
    {"TEMPO",           "TEMPO",                       "NON PUBLIC PROP",   10.0f,  1000.0f,    1.0f,    1.0f, false, 0.0f,    Unit::Milliseconds, 42},
    {"TOGGLEOVERLAY",   "TOGGLE OVERLAY",              "NON PUBLIC PROP",    0.0f,     1.0f,    1.0f,    1.0f, false, 0.0f,          Unit::Switch, 43},
    {"TIME_OFFSET",     "Time Offset",                 "NON PUBLIC PROP",    0.0f,     1.0f,    0.0f,    0.0f, false, 0.0f,   Unit::SignedPercent, 44},
};
// clang-format on
}
