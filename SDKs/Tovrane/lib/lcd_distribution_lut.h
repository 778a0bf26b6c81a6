// SPDX-License-Identifier: GPL-3.0-or-later
// The sub-pixel filter: spreads the coverage of a sub-pixel (a third of a pixel) over itself and its two
// neighbours on each side.
//
// Without it, every edge would be coloured. The shares are truncated, not rounded, so that the sum of five
// never exceeds a byte; full coverage becomes 254.
#pragma once

#include <agg_basics.h>

namespace agg
{
// [any thread]  Constant after construction.
class lcd_distribution_lut
{
public:
    // The weights of a sub-pixel itself, of its neighbours, and of theirs; they are scaled to a sum of 1.
    lcd_distribution_lut(double prim, double second, double tert)
    {
        const double norm = 1.0 / (prim + second * 2.0 + tert * 2.0);
        for (unsigned cover = 0; cover < 256; ++cover)
        {
            m_primary[cover] = int8u(prim * norm * cover);
            m_secondary[cover] = int8u(second * norm * cover);
            m_tertiary[cover] = int8u(tert * norm * cover);
        }
    }

    unsigned primary(unsigned cover) const { return m_primary[cover]; }
    unsigned secondary(unsigned cover) const { return m_secondary[cover]; }
    unsigned tertiary(unsigned cover) const { return m_tertiary[cover]; }

private:
    int8u m_primary[256];
    int8u m_secondary[256];
    int8u m_tertiary[256];
};
}
