// SPDX-License-Identifier: GPL-3.0-or-later
// The time bases: the note lengths from trigger to trigger that the user may choose.
#pragma once

// Five plain note values, then the same as triplets, then dotted.
constexpr int gNumTimeAdjustEntries = 15;
constexpr int gNumSingleTimeAdjustEntries = 5;

// In beats (quarter notes).
extern const float gTimeAdjustMultiplier[gNumTimeAdjustEntries];
extern const char* const gTimeAdjustText[gNumTimeAdjustEntries];

// Whether a number of beats can be a time base: above 0, and finite. It need not be one of the fifteen.
bool isTimeBase(float beats);
