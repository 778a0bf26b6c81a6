// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/glyph_masks.h"

#include "Tovrane/lib/ren_rgba_lcd.h"

namespace agg
{
namespace
{
constexpr int bytes_of_pixel = 4;

// Rounds down.
int pixel_of_third(int third)
{
    return third >= 0 ? third / 3 : -((2 - third) / 3);
}

// One byte to a pixel or sub-pixel, from the rows of spans that the engine writes.
pixel_mask unpacked(const std::vector<int8u>& bytes, const rect_i& bounds)
{
    pixel_mask mask{bounds.x1, bounds.y1, bounds.x2 - bounds.x1, bounds.y2 - bounds.y1, {}};
    mask.values.resize(size_t(mask.width) * size_t(mask.height));
    serialized_scanlines_adaptor_aa8 rows(bytes.data(), unsigned(bytes.size()), 0.0, 0.0);
    serialized_scanlines_adaptor_aa8::embedded_scanline row;
    for (bool more = rows.rewind_scanlines() && rows.sweep_scanline(row); more;
         more = rows.sweep_scanline(row))
    {
        int8u* const begin = &mask.values[size_t(row.y() - mask.top) * size_t(mask.width)];
        unsigned left = row.num_spans();
        for (auto span = row.begin();; ++span)
        {
            if (span->len > 0)
                std::copy_n(span->covers, span->len, begin + (span->x - mask.left));
            else
                std::fill_n(begin + (span->x - mask.left), -span->len, *span->covers);
            if (--left == 0)
                break;
        }
    }
    return mask;
}

// Puts each third into the byte of its colour.
pixel_mask in_whole_pixels(const pixel_mask& thirds, int phase, bool red_first)
{
    const int* const byte_of_third = ren_rgba_lcd::bytes_of_thirds(red_first);
    pixel_mask mask;
    mask.left = pixel_of_third(thirds.left + phase);
    mask.top = thirds.top;
    mask.width = pixel_of_third(thirds.left + phase + thirds.width - 1) - mask.left + 1;
    mask.height = thirds.height;
    mask.values.resize(size_t(mask.width) * size_t(mask.height) * bytes_of_pixel);
    for (int y = 0; y < thirds.height; ++y)
        for (int x = 0; x < thirds.width; ++x)
        {
            const int third = thirds.left + phase + x - mask.left * 3;
            const size_t pixel = size_t(y) * size_t(mask.width) + size_t(third / 3);
            mask.values[pixel * bytes_of_pixel + size_t(byte_of_third[third % 3])] =
                thirds.values[size_t(y) * size_t(thirds.width) + size_t(x)];
        }
    return mask;
}
}

masked_glyph* glyph_masks::glyph(unsigned code)
{
    use_engines_font();
    auto& codes = m_font->pages[(code >> 8) & 0xFF];
    if (codes == nullptr)
        codes = std::make_unique<page>();
    auto& found = (*codes)[code & 0xFF];
    if (found == nullptr)
        found = make(code);
    if (found == nullptr)
        return nullptr;
    m_before_last = m_last;
    m_last = found.get();
    return found.get();
}

void glyph_masks::use_engines_font()
{
    if (m_change_stamp == m_engine.change_stamp())
        return;
    m_change_stamp = m_engine.change_stamp();
    begin_text();
    const char* const signature = m_engine.font_signature();
    for (const auto& known : m_fonts)
        if (known->signature == signature)
        {
            m_font = known.get();
            return;
        }
    if (m_fonts.size() == most_fonts)
        m_fonts.erase(m_fonts.begin());
    m_fonts.push_back(std::make_unique<font>());
    m_font = m_fonts.back().get();
    m_font->signature = signature;
}

std::unique_ptr<masked_glyph> glyph_masks::make(unsigned code)
{
    if (!m_engine.prepare_glyph(code))
        return nullptr;
    auto made = std::make_unique<masked_glyph>();
    made->index = m_engine.glyph_index();
    made->advance_x = m_engine.advance_x();
    made->advance_y = m_engine.advance_y();
    made->type = m_engine.data_type();
    m_bytes.resize(m_engine.data_size());
    m_engine.write_glyph_to(m_bytes.data());
    const rect_i& bounds = m_engine.bounds();
    if (made->type == glyph_data_outline)
        made->outline = m_bytes;
    else if (made->type == glyph_data_gray8 && bounds.x1 < bounds.x2) // a blank has no pixels
        made->covers = unpacked(m_bytes, bounds);
    return made;
}

void glyph_masks::add_kerning(double* x, double* y)
{
    if (m_before_last == nullptr || m_last == nullptr)
        return;
    const unsigned first = m_before_last->index;
    const unsigned second = m_last->index;
    kerning& known = m_font->pairs[(first * 31 + second) % m_font->pairs.size()];
    if (known.first != first || known.second != second)
    {
        known = {first, second, 0.0, 0.0};
        m_engine.add_kerning(first, second, &known.x, &known.y);
    }
    *x += known.x;
    *y += known.y;
}

const pixel_mask& glyph_masks::phase(masked_glyph& glyph, unsigned thirds)
{
    pixel_mask& mask = glyph.phases[thirds];
    if (mask.is_empty() && !glyph.covers.is_empty())
        mask = in_whole_pixels(glyph.covers, int(thirds), m_red_first);
    return mask;
}

void glyph_masks::red_first(bool first)
{
    if (first == m_red_first)
        return;
    m_red_first = first;
    for (const auto& known : m_fonts)
        for (const auto& codes : known->pages)
            if (codes != nullptr)
                for (const auto& glyph : *codes)
                    if (glyph != nullptr)
                        glyph->phases = {};
}
}
