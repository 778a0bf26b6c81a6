// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/font_engine_ft2_lcd.h"

#include "Tovrane/lib/decompose_ft.h"

#include <agg_renderer_scanline.h>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ft2build.h>
#include FT_FREETYPE_H

namespace agg
{
namespace
{
constexpr double primaryWeight = 0.4; // these three of the sub-pixel filter
constexpr double secondaryWeight = 0.2;
constexpr double tertiaryWeight = 0.1;
constexpr double largestHeight = 1000.0; // pixels to an em

int loadFlags(glyph_ft2_hining hinting)
{
    switch (hinting)
    {
    case glyph_ft2_hint_native:
        return FT_LOAD_DEFAULT;
    case glyph_ft2_hint_auto:
        return FT_LOAD_FORCE_AUTOHINT | FT_LOAD_TARGET_LIGHT; // upwards alone
    default:
        return FT_LOAD_NO_HINTING;
    }
}
}

font_engine_ft2_lcd::font_engine_ft2_lcd(unsigned int max_faces)
    : m_max_faces(std::max(max_faces, 1u)),
      m_filter(primaryWeight, secondaryWeight, tertiaryWeight),
      m_curves(m_path),
      m_scanlines_lcd(m_filter)
{
    if (FT_Init_FreeType(&m_library) != 0)
        m_library = nullptr;
    m_curves.approximation_scale(4.0);
}

font_engine_ft2_lcd::~font_engine_ft2_lcd()
{
    for (const Face& known : m_faces)
        FT_Done_Face(known.face);
    if (m_library)
        FT_Done_FreeType(m_library);
}

bool font_engine_ft2_lcd::load_font(const char* name, unsigned int face_index, glyph_ft2_lcd_type type,
                                    const char* memory, long length)
{
    if (!name || !m_library)
        return false;
    if (m_cur_face && m_name == name && m_face_index == face_index && m_type == type)
        return true;

    FT_FaceRec_* face = find_face(name);
    if (!face)
    {
        face = open_face(name, face_index, memory, length);
        if (!face)
            return false;
        keep_face(name, face);
    }
    m_cur_face = face;
    m_name = name;
    m_face_index = face_index;
    m_type = type;
    m_affine.reset();
    if (type == glyph_ft2_lcd)
        m_affine.scale(3.0, 1.0);
    if (m_flip_y)
        m_affine.scale(1.0, -1.0);
    update_char_size();
    return true;
}

FT_FaceRec_* font_engine_ft2_lcd::find_face(const char* name) const
{
    for (const Face& known : m_faces)
        if (known.name == name)
            return known.face;
    return nullptr;
}

FT_FaceRec_* font_engine_ft2_lcd::open_face(const char* name, unsigned index, const char* memory,
                                            long length) const
{
    if (memory && length <= 0)
        return nullptr;
    FT_Face face = nullptr;
    const auto* bytes = reinterpret_cast<const FT_Byte*>(memory);
    const FT_Error error = memory ? FT_New_Memory_Face(m_library, bytes, length, FT_Long(index), &face)
                                  : FT_New_Face(m_library, name, FT_Long(index), &face);
    return error == 0 ? face : nullptr;
}

void font_engine_ft2_lcd::keep_face(const char* name, FT_FaceRec_* face)
{
    if (m_faces.size() == m_max_faces)
    {
        FT_Done_Face(m_faces.front().face);
        m_faces.erase(m_faces.begin());
    }
    m_faces.push_back({name, face});
}

bool font_engine_ft2_lcd::height(double h)
{
    if (!(h > 0.0 && h <= largestHeight))
        return false;
    if (m_height != int(h * 64.0))
    {
        m_height = int(h * 64.0);
        update_char_size();
    }
    return true;
}

bool font_engine_ft2_lcd::width(double w)
{
    if (!(w >= 0.0 && w <= largestHeight))
        return false;
    if (m_width != int(w * 64.0))
    {
        m_width = int(w * 64.0);
        update_char_size();
    }
    return true;
}

void font_engine_ft2_lcd::hinting(glyph_ft2_hining mode)
{
    if (m_hinting == mode)
        return;
    m_hinting = mode;
    update_signature();
}

void font_engine_ft2_lcd::flip_y(bool flip)
{
    if (m_flip_y == flip)
        return;
    m_flip_y = flip;
    m_affine.scale(1.0, -1.0);
    update_signature();
}

double font_engine_ft2_lcd::ascender() const
{
    if (!m_cur_face || m_cur_face->height == 0)
        return 0.0;
    return m_cur_face->ascender * height() / m_cur_face->height;
}

void font_engine_ft2_lcd::update_char_size()
{
    if (m_cur_face && m_height > 0)
        FT_Set_Char_Size(m_cur_face, m_width, m_height, 0, 0); // at 72 dots an inch, where points are pixels
    update_signature();
}

void font_engine_ft2_lcd::update_signature()
{
    constexpr int resolution = 0; // none, since sizes are in pixels
    const unsigned charMap = m_cur_face && m_cur_face->charmap ? unsigned(m_cur_face->charmap->encoding) : 0;
    char text[200];
    m_signature = m_name;
    std::snprintf(text, sizeof text, ",%u,%d,%d,%d:%dx%d,%d,%d", charMap, int(m_face_index), int(m_type),
                  resolution, m_height, m_width, int(m_hinting), int(m_flip_y));
    m_signature += text;
    const auto fixed = [](double factor) { return unsigned(int(factor * 65536.0)); };
    std::snprintf(text, sizeof text, ",%08X%08X%08X%08X%08X%08X", fixed(m_affine.sx), fixed(m_affine.shy),
                  fixed(m_affine.shx), fixed(m_affine.sy), fixed(m_affine.tx), fixed(m_affine.ty));
    m_signature += text;
    std::snprintf(text, sizeof text, ",%f,%f,%f", primaryWeight, secondaryWeight, tertiaryWeight);
    m_signature += text;
    ++m_change_stamp;
}

bool font_engine_ft2_lcd::prepare_glyph(unsigned int code)
{
    m_data_type = glyph_data_invalid;
    m_data_size = 0;
    if (!m_cur_face || m_height <= 0)
        return false;
    m_glyph_index = FT_Get_Char_Index(m_cur_face, code);
    if (FT_Load_Glyph(m_cur_face, m_glyph_index, loadFlags(m_hinting)) != 0)
        return false;
    FT_GlyphSlot slot = m_cur_face->glyph;
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE ||
        !is_drawable(slot->outline, m_type == glyph_ft2_lcd ? 3 : 1))
        return false;
    // FreeType rounds the advance of a glyph that it has hinted upwards alone, too.
    m_advance_x = m_hinting == glyph_ft2_hint_auto ? double(slot->linearHoriAdvance) / 65536.0
                                                   : double(slot->advance.x) / 64.0;
    m_advance_y = double(slot->advance.y) / 64.0;
    return m_type == glyph_ft2_mono ? prepare_mono(slot) : prepare_outline(slot);
}

bool font_engine_ft2_lcd::prepare_mono(FT_GlyphSlotRec_* slot)
{
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_MONO) != 0)
        return false;
    decompose_ft_bitmap_mono(slot->bitmap, slot->bitmap_left, slot->bitmap_top, m_flip_y, m_scanlines_bin);
    take_scanlines(m_scanlines_bin, glyph_data_mono);
    return true;
}

bool font_engine_ft2_lcd::prepare_outline(FT_GlyphSlotRec_* slot)
{
    if (!decompose_ft_outline(slot->outline, m_affine, m_path))
        return false;
    if (m_type != glyph_ft2_outline)
    {
        rasterize_outline();
        return true;
    }
    const rect_d box = m_path.bounding_rect();
    m_bounds = rect_i(int(std::floor(box.x1)), int(std::floor(box.y1)), int(std::ceil(box.x2)),
                      int(std::ceil(box.y2)));
    m_data_size = m_path.byte_size();
    m_data_type = glyph_data_outline;
    return true;
}

void font_engine_ft2_lcd::rasterize_outline()
{
    m_rasterizer.reset();
    m_rasterizer.add_path(m_curves);
    if (m_type == glyph_ft2_lcd)
    {
        m_scanlines_lcd.prepare();
        render_scanlines(m_rasterizer, m_scanline_aa, m_scanlines_lcd);
        take_scanlines(m_scanlines_lcd, glyph_data_gray8);
        return;
    }
    m_scanlines_aa.prepare();
    render_scanlines(m_rasterizer, m_scanline_aa, m_scanlines_aa);
    take_scanlines(m_scanlines_aa, glyph_data_gray8);
}

template <class Storage>
void font_engine_ft2_lcd::take_scanlines(const Storage& storage, glyph_data_type type)
{
    m_data_size = storage.byte_size();
    m_data_type = type;
    const bool empty = storage.min_x() > storage.max_x(); // such as a blank
    m_bounds = empty ? rect_i(0, 0, 0, 0)
                     : rect_i(storage.min_x(), storage.min_y(), storage.max_x() + 1, storage.max_y() + 1);
}

void font_engine_ft2_lcd::write_glyph_to(unsigned char* data) const
{
    switch (m_data_type)
    {
    case glyph_data_mono:
        m_scanlines_bin.serialize(data);
        break;
    case glyph_data_gray8:
        if (m_type == glyph_ft2_lcd)
            m_scanlines_lcd.serialize(data);
        else
            m_scanlines_aa.serialize(data);
        break;
    case glyph_data_outline:
        m_path.serialize(data);
        break;
    default:
        break;
    }
}

bool font_engine_ft2_lcd::add_kerning(unsigned int first, unsigned int second, double* x, double* y)
{
    if (!m_cur_face || !first || !second || !FT_HAS_KERNING(m_cur_face))
        return false;
    // In whole pixels only where advances are.
    const FT_UInt mode = m_hinting == glyph_ft2_hint_native ? FT_KERNING_DEFAULT : FT_KERNING_UNFITTED;
    FT_Vector delta;
    if (FT_Get_Kerning(m_cur_face, first, second, mode, &delta) != 0)
        return false;
    *x += double(delta.x) / 64.0;
    *y += double(delta.y) / 64.0;
    return true;
}
}
