// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of a window: cool grey-violet lines on a dark ground, and one warm accent. All art follows
// them.
#pragma once

#include "Tovrane/draw/CColor.h"

namespace Tovra
{
// The violet of lines and shapes; the number behind the colour's name tells how strong it is.
inline constexpr unsigned char displayR = 161;
inline constexpr unsigned char displayG = 163;
inline constexpr unsigned char displayB = 193;

inline constexpr CColor kDisplayColor1{displayR, displayG, displayB, 20};
inline constexpr CColor kDisplayColor2{displayR, displayG, displayB, 60};
inline constexpr CColor kDisplayColor3{displayR, displayG, displayB, 120};
inline constexpr CColor kDisplayColor4{displayR, displayG, displayB, 130};
inline constexpr CColor kDisplayColor5{displayR, displayG, displayB, 200};

inline constexpr CColor kDisplayOuterBorder{255, 255, 255, 255};
inline constexpr CColor kDisplayTextColor{250, 200, 60, 225};
inline constexpr CColor kDisplayTextColorDARK{125, 100, 30, 225};
inline constexpr CColor kDisplayTextDark{displayB, displayG, displayR, 225};
inline constexpr CColor kDisplayColorBand{162, 152, 43, 225};
inline constexpr CColor kDisplayColorBand_glow{243, 228, 64, 225};
inline constexpr CColor kDisplayEnvShow{162, 152, 43, 90};
inline constexpr CColor kDisplaySenseTxt{42, 43, 69, 255};

// Lies over what the pointer is on.
inline constexpr CColor kHighlightColor{200, 250, 240, 15};
}
