// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CColor.h"

namespace Tovra
{
static unsigned char onBlack(unsigned char channel, unsigned char alpha)
{
    return static_cast<unsigned char>(float(channel) * float(alpha) / 255.0f);
}

CColor convertCColorNoAlpha(const CColor& color)
{
    return {onBlack(color.red, color.alpha), onBlack(color.green, color.alpha),
            onBlack(color.blue, color.alpha), 255};
}
}
