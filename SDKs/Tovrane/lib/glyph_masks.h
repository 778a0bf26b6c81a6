// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the glyphs that a font engine has made, ready to be blended: as masks, the coverage of whole pixels.
//
// A glyph of sub-pixels may begin at each third of a pixel, and has a mask for each of these phases, made
// when it is first drawn there. Glyphs are kept under the engine's signature, so that a font that comes back
// finds its own; of more than 32 fonts the one that came first is dropped. What is kept is found without
// allocation.
#pragma once

#include "Tovrane/lib/font_engine_ft2_lcd.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

namespace agg
{
// Rows of width x height pixels, each of one byte or of as many as a pixel of the picture has.
struct pixel_mask
{
    int left = 0; // from the glyph's origin
    int top = 0;
    int width = 0;
    int height = 0;
    std::vector<int8u> values;

    bool is_empty() const { return values.empty(); }

    // Calls row(x, y, length, values) for each row with pixels in the clip, whose edges are all inside, when
    // the origin is at (x, y).
    template <class Row>
    void for_each_row(int x, int y, const rect_i& clip, Row row) const
    {
        if (is_empty())
            return;
        const size_t pixel_bytes = values.size() / (size_t(width) * size_t(height));
        const int first_x = std::max(left + x, clip.x1);
        const int length = std::min(left + x + width - 1, clip.x2) - first_x + 1;
        const int last_y = std::min(top + y + height - 1, clip.y2);
        if (length <= 0)
            return;
        for (int at = std::max(top + y, clip.y1); at <= last_y; ++at)
        {
            const size_t pixel = size_t(at - top - y) * size_t(width) + size_t(first_x - left - x);
            row(first_x, at, unsigned(length), &values[pixel * pixel_bytes]);
        }
    }
};

struct masked_glyph
{
    unsigned index = 0;
    double advance_x = 0.0;
    double advance_y = 0.0;
    glyph_data_type type = glyph_data_invalid;
    pixel_mask covers;                // of a grey glyph; in thirds of a pixel for one of sub-pixels
    std::array<pixel_mask, 3> phases; // of one of sub-pixels, with four bytes to a pixel; empty until drawn
    std::vector<int8u> outline;       // serialised, of an outline
};

// [window thread]  One thread at a time.
class glyph_masks
{
public:
    // The engine, which has to outlive it, makes what is missing.
    explicit glyph_masks(font_engine_ft2_lcd& engine) : m_engine(engine) {}

    // The glyph of a character of the engine's present font, below 65536; null if there is none. It stays
    // until another font is used.
    masked_glyph* glyph(unsigned code);
    // Adds the kerning between the last two glyphs, in pixels.
    void add_kerning(double* x, double* y);
    // No kerning with the glyphs before.
    void begin_text() { m_before_last = m_last = nullptr; }

    // The mask of a glyph of sub-pixels that begins 0, 1 or 2 thirds after a pixel's left edge.
    const pixel_mask& phase(masked_glyph& glyph, unsigned thirds);
    // The order of the colours on the screen: red is the leftmost one (the default), or blue.
    void red_first(bool first);

private:
    using page = std::array<std::unique_ptr<masked_glyph>, 256>;
    struct kerning
    {
        unsigned first = 0; // both indexes are 0 where nothing is known yet, which is a pair without kerning
        unsigned second = 0;
        double x = 0.0;
        double y = 0.0;
    };
    struct font
    {
        std::string signature;
        std::array<kerning, 1024> pairs; // a pair takes the place of another with the same remainder
        std::array<std::unique_ptr<page>, 256> pages;
    };
    static constexpr size_t most_fonts = 32;

    void use_engines_font();
    std::unique_ptr<masked_glyph> make(unsigned code);

    font_engine_ft2_lcd& m_engine;
    std::vector<std::unique_ptr<font>> m_fonts; // the one that came first in front
    font* m_font = nullptr;
    int m_change_stamp = -1;
    bool m_red_first = true;
    const masked_glyph* m_before_last = nullptr;
    const masked_glyph* m_last = nullptr;
    std::vector<int8u> m_bytes; // of the glyph being made
};
}
