// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/SubpixelOrder.h"

namespace Tovra
{
SubpixelOrder subpixelOrderByName(std::string_view name)
{
    static constexpr struct
    {
        std::string_view name, number;
        SubpixelOrder order;
    } known[] = {
        {"bgr", "2", kSubpixelBGR},
        {"vrgb", "3", kSubpixelNone},
        {"vbgr", "4", kSubpixelNone},
        {"none", "5", kSubpixelNone},
    };
    for (const auto& each : known)
        if (name == each.name || name == each.number)
            return each.order;
    return kSubpixelRGB;
}
}
