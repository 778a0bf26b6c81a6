// The sub-pixel filter: how much of one third of a pixel reaches itself and its two neighbours on each side.
//
// Without it, coverage by thirds would colour every edge. The shares are cut off, not rounded, so that five
// of them never exceed a byte; full coverage comes out as 254.
#pragma once

#include <agg_basics.h>

namespace agg
{
// [any thread]  Does not change once it is made.
class lcd_distribution_lut
{
public:
    // Weights of a third itself, of its neighbours, and of theirs; they are brought to a sum of 1.
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
