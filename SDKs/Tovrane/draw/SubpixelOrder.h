// SPDX-License-Identifier: GPL-3.0-or-later
// The order in which a screen's pixels have their red, green and blue parts, from left to right.
#pragma once

#include <string_view>

namespace Tovra
{
enum SubpixelOrder
{
    kSubpixelRGB,
    kSubpixelBGR,
    kSubpixelNone // not side by side: text for sub-pixels is drawn in grey
};

// [any thread]  The order that desktops call so, as the X resource Xft.rgba has it: a name, or its number in
// fontconfig. "rgb" and "bgr" are themselves; "vrgb", "vbgr" and "none" are kSubpixelNone. For anything else,
// such as an empty name or "unknown", it is the order of most screens, kSubpixelRGB.
SubpixelOrder subpixelOrderByName(std::string_view name);
}
