// SPDX-License-Identifier: GPL-3.0-or-later
// The 28 compositing operators in the order of BlendMode. AGG has dropped three of them (contrast and the two
// inversions), which are defined here in its way: with premultiplied values from 0 to 1.
#pragma once

#include <agg_pixfmt_rgba.h>
#include <array>

namespace Tovra
{
using PixelOrder = agg::order_bgra;

// Spreads the picture's values away from half its alpha, by twice the amount that the colour exceeds half of
// its own alpha.
struct CompOpContrast : agg::blender_base<agg::rgba8, PixelOrder>
{
    static void blend_pix(agg::int8u* p, agg::int8u r, agg::int8u g, agg::int8u b, agg::int8u a,
                          agg::cover_type cover)
    {
        const agg::rgba s = get(r, g, b, a, cover);
        agg::rgba d = get(p);
        const double middle = d.a * 0.5;
        const auto spread = [&](double value, double by)
        { return (value - middle) * ((by - s.a * 0.5) * 2.0 + 1.0) + middle; };
        d.r = spread(d.r, s.r);
        d.g = spread(d.g, s.g);
        d.b = spread(d.b, s.b);
        set(p, agg::clip(d));
    }
};

// Dca' = (Da - Dca) x Sa + Dca x (1 - Sa), Da' = Sa + Da - Sa x Da; with perColor the first Sa is Sca.
template <bool perColor>
struct CompOpInvert : agg::blender_base<agg::rgba8, PixelOrder>
{
    static void blend_pix(agg::int8u* p, agg::int8u r, agg::int8u g, agg::int8u b, agg::int8u a,
                          agg::cover_type cover)
    {
        const agg::rgba s = get(r, g, b, a, cover);
        if (s.a <= 0)
            return;
        agg::rgba d = get(p);
        const auto invert = [&](double value, double by)
        { return (d.a - value) * (perColor ? by : s.a) + value * (1.0 - s.a); };
        d.r = invert(d.r, s.r);
        d.g = invert(d.g, s.g);
        d.b = invert(d.b, s.b);
        d.a += s.a - s.a * d.a;
        set(p, agg::clip(d));
    }
};

using CompOp = void (*)(agg::int8u* pixel, agg::int8u r, agg::int8u g, agg::int8u b, agg::int8u a,
                        agg::cover_type cover);

template <template <class, class> class Operator>
constexpr CompOp compOp = &Operator<agg::rgba8, PixelOrder>::blend_pix;

inline constexpr std::array<CompOp, 28> compOps = {
    compOp<agg::comp_op_rgba_clear>,      compOp<agg::comp_op_rgba_src>,
    compOp<agg::comp_op_rgba_dst>,        compOp<agg::comp_op_rgba_src_over>,
    compOp<agg::comp_op_rgba_dst_over>,   compOp<agg::comp_op_rgba_src_in>,
    compOp<agg::comp_op_rgba_dst_in>,     compOp<agg::comp_op_rgba_src_out>,
    compOp<agg::comp_op_rgba_dst_out>,    compOp<agg::comp_op_rgba_src_atop>,
    compOp<agg::comp_op_rgba_dst_atop>,   compOp<agg::comp_op_rgba_xor>,
    compOp<agg::comp_op_rgba_plus>,       compOp<agg::comp_op_rgba_minus>,
    compOp<agg::comp_op_rgba_multiply>,   compOp<agg::comp_op_rgba_screen>,
    compOp<agg::comp_op_rgba_overlay>,    compOp<agg::comp_op_rgba_darken>,
    compOp<agg::comp_op_rgba_lighten>,    compOp<agg::comp_op_rgba_color_dodge>,
    compOp<agg::comp_op_rgba_color_burn>, compOp<agg::comp_op_rgba_hard_light>,
    compOp<agg::comp_op_rgba_soft_light>, compOp<agg::comp_op_rgba_difference>,
    compOp<agg::comp_op_rgba_exclusion>,  &CompOpContrast::blend_pix,
    &CompOpInvert<false>::blend_pix,      &CompOpInvert<true>::blend_pix};

// Like agg::comp_op_adaptor_rgba and agg::comp_op_adaptor_rgba_pre, but with this table. op is below 28.
template <bool premultiplied>
struct CompOpAdaptor
{
    using color_type = agg::rgba8;
    using order_type = PixelOrder;
    using value_type = color_type::value_type;
    using calc_type = color_type::calc_type;
    using long_type = color_type::long_type;

    static void blend_pix(unsigned op, value_type* p, value_type r, value_type g, value_type b, value_type a,
                          agg::cover_type cover)
    {
        if constexpr (!premultiplied)
        {
            r = color_type::multiply(r, a);
            g = color_type::multiply(g, a);
            b = color_type::multiply(b, a);
        }
        compOps[op](p, r, g, b, a, cover);
    }
};
}
