// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a font: some of its glyphs in every type and hinting. Each has the size that it reports and
// lies within its bounds.
#include "Require.h"
#include "Tovrane/lib/font_engine_ft2_lcd.h"

#include <vector>

namespace
{
using agg::font_engine_ft2_lcd;

constexpr unsigned codes[] = {'A', 'V', ' ', 0xe4, 0x20ac};

template <class Adaptor>
void readBack(const std::vector<unsigned char>& bytes, const agg::rect_i& bounds)
{
    Adaptor adaptor(bytes.data(), unsigned(bytes.size()), 0.0, 0.0);
    typename Adaptor::embedded_scanline row;
    if (!adaptor.rewind_scanlines())
        return;
    while (adaptor.sweep_scanline(row))
    {
        require(row.y() >= bounds.y1 && row.y() < bounds.y2, "rows lie within the bounds");
        auto span = row.begin();
        for (unsigned left = row.num_spans(); left > 0; --left)
        {
            require(span->x >= bounds.x1 && span->x + span->len <= bounds.x2, "spans lie within the bounds");
            if (left > 1)
                ++span;
        }
    }
}

void tryGlyph(font_engine_ft2_lcd& engine, unsigned code)
{
    if (!engine.prepare_glyph(code))
        return;
    std::vector<unsigned char> bytes(engine.data_size());
    engine.write_glyph_to(bytes.data());
    if (engine.data_type() == agg::glyph_data_mono)
        readBack<font_engine_ft2_lcd::mono_adaptor_type>(bytes, engine.bounds());
    if (engine.data_type() == agg::glyph_data_gray8)
        readBack<font_engine_ft2_lcd::gray8_adaptor_type>(bytes, engine.bounds());
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    using agg::glyph_ft2_hining;
    using agg::glyph_ft2_lcd_type;
    const auto* font = reinterpret_cast<const char*>(data);
    font_engine_ft2_lcd engine;
    engine.height(24.0);
    for (int type = agg::glyph_ft2_mono; type <= agg::glyph_ft2_outline; ++type)
    {
        if (!engine.load_font("font", 0, glyph_ft2_lcd_type(type), font, long(size)))
            return 0;
        engine.hinting(glyph_ft2_hining(type % 3));
        engine.flip_y(type == agg::glyph_ft2_lcd);
        unsigned former = 0;
        for (const unsigned code : codes)
        {
            tryGlyph(engine, code);
            double x = 0.0, y = 0.0;
            engine.add_kerning(former, engine.glyph_index(), &x, &y);
            former = engine.glyph_index();
        }
    }
    return 0;
}
