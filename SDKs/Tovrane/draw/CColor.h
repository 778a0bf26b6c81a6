// SPDX-License-Identifier: GPL-3.0-or-later
// A colour as views use it: red, green, blue and alpha (255 is opaque), not premultiplied.
#pragma once

namespace Tovra
{
// [any thread]  A plain value.
struct CColor
{
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
    unsigned char alpha = 0;

    bool operator==(const CColor&) const = default;
};

inline constexpr CColor kTransparentCColor{255, 255, 255, 0};
inline constexpr CColor kBlackCColor{0, 0, 0, 255};
inline constexpr CColor kWhiteCColor{255, 255, 255, 255};
inline constexpr CColor kGreyCColor{127, 127, 127, 255};
inline constexpr CColor kRedCColor{255, 0, 0, 255};
inline constexpr CColor kGreenCColor{0, 255, 0, 255};
inline constexpr CColor kBlueCColor{0, 0, 255, 255};
inline constexpr CColor kYellowCColor{255, 255, 0, 255};
inline constexpr CColor kMagentaCColor{255, 0, 255, 255};
inline constexpr CColor kCyanCColor{0, 255, 255, 255};

// [any thread]  The opaque colour that results on black.
CColor convertCColorNoAlpha(const CColor& color);
}
