// SPDX-License-Identifier: GPL-3.0-or-later
// Makes glyphs of TrueType faces for agg::font_cache_manager: mono, grey, with sub-pixels, or as outlines.
//
// FreeType reads and hints, AGG rasterises, so that text looks the same on every machine. A glyph takes three
// steps: prepare_glyph; then its size, bounds and advances are read; then write_glyph_to. font_signature() is
// the key of the glyph's cache: whatever changes the shape of glyphs changes the key.
//
// Faces are kept by name: a name that was loaded before stands for the same face again, and the memory that
// is passed with it is ignored.
#pragma once

#include "Tovrane/lib/scanline_storage_lcd.h"

#include <agg_conv_curve.h>
#include <agg_font_cache_manager.h>
#include <agg_path_storage_integer.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_scanline_storage_bin.h>
#include <agg_trans_affine.h>
#include <string>
#include <vector>

struct FT_FaceRec_;
struct FT_GlyphSlotRec_;
struct FT_LibraryRec_;

namespace agg
{
enum glyph_ft2_lcd_type
{
    glyph_ft2_mono = 0,
    glyph_ft2_gray8 = 1,
    glyph_ft2_lcd = 2, // x in thirds of a pixel
    glyph_ft2_outline = 3
};

enum glyph_ft2_hining
{
    glyph_ft2_hint_none = 0,
    glyph_ft2_hint_native = 1,
    glyph_ft2_hint_auto = 2
};

// [window thread]  One thread at a time. Each engine has a FreeType library of its own.
class font_engine_ft2_lcd
{
public:
    // The types with which agg::font_cache_manager reads the serialised glyphs.
    typedef serialized_scanlines_adaptor_aa<int8u> gray8_adaptor_type;
    typedef serialized_scanlines_adaptor_bin mono_adaptor_type;
    typedef serialized_integer_path_adaptor<int, 6> path_adaptor_type;

    // Keeps at most max_faces faces; one more replaces the one that was loaded first.
    explicit font_engine_ft2_lcd(unsigned int max_faces = 32);
    ~font_engine_ft2_lcd();
    font_engine_ft2_lcd(const font_engine_ft2_lcd&) = delete;
    font_engine_ft2_lcd& operator=(const font_engine_ft2_lcd&) = delete;

    // Makes a face the current one: from memory, which has to outlive the engine, or, if that is null, from
    // the file called name. False if that is not a font; the former face stays current.
    bool load_font(const char* name, unsigned int face_index, glyph_ft2_lcd_type type, const char* memory,
                   long length);

    // Pixels to an em, in steps of 1/64. A width of 0 stands for the height. False, and no change, for a NaN,
    // a negative value, a height of 0, or more than 1000.
    bool height(double h);
    bool width(double w);
    void hinting(glyph_ft2_hining mode);
    // true: y grows downwards, as in pictures.
    void flip_y(bool flip);

    double height() const { return m_height / 64.0; }
    double width() const { return m_width / 64.0; }
    glyph_ft2_hining hinting() const { return m_hinting; }
    bool flip_y() const { return m_flip_y; }
    // The ascender in pixels, if a line of the face (not its em) were height() tall; 0 without a face.
    double ascender() const;

    // Changes whenever the signature may have changed.
    int change_stamp() const { return m_change_stamp; }
    const char* font_signature() const { return m_signature.c_str(); }

    // Makes the glyph of a character, or the face's glyph for missing characters. False without a face, for a
    // damaged glyph, and for one of more than 16 Mi pixels, or sub-pixels.
    bool prepare_glyph(unsigned int code);
    unsigned glyph_index() const { return m_glyph_index; }
    unsigned data_size() const { return m_data_size; }
    glyph_data_type data_type() const { return m_data_type; }
    const rect_i& bounds() const { return m_bounds; }
    double advance_x() const { return m_advance_x; }
    double advance_y() const { return m_advance_y; }
    // Writes data_size() bytes.
    void write_glyph_to(unsigned char* data) const;

    // Adds the kerning between two glyph indexes, in pixels. False, and no change, if there is none.
    bool add_kerning(unsigned int first, unsigned int second, double* x, double* y);

private:
    struct Face
    {
        std::string name;
        FT_FaceRec_* face;
    };

    FT_FaceRec_* find_face(const char* name) const;
    FT_FaceRec_* open_face(const char* name, unsigned index, const char* memory, long length) const;
    void keep_face(const char* name, FT_FaceRec_* face);
    void update_char_size();
    void update_signature();
    bool prepare_mono(FT_GlyphSlotRec_* slot);
    bool prepare_outline(FT_GlyphSlotRec_* slot);
    void rasterize_outline();
    template <class Storage>
    void take_scanlines(const Storage& storage, glyph_data_type type);

    FT_LibraryRec_* m_library = nullptr;
    unsigned m_max_faces;
    std::vector<Face> m_faces;
    FT_FaceRec_* m_cur_face = nullptr;

    std::string m_name;
    unsigned m_face_index = 0;
    glyph_ft2_lcd_type m_type = glyph_ft2_gray8;
    int m_height = 0; // both in 64ths of a pixel
    int m_width = 0;
    glyph_ft2_hining m_hinting = glyph_ft2_hint_none;
    bool m_flip_y = false;
    trans_affine m_affine; // of outlines: three times the width for sub-pixels
    std::string m_signature;
    int m_change_stamp = 0;

    unsigned m_glyph_index = 0;
    unsigned m_data_size = 0;
    glyph_data_type m_data_type = glyph_data_invalid;
    rect_i m_bounds{0, 0, 0, 0};
    double m_advance_x = 0.0;
    double m_advance_y = 0.0;

    lcd_distribution_lut m_filter;
    path_storage_integer<int, 6> m_path;
    conv_curve<path_storage_integer<int, 6>> m_curves;
    rasterizer_scanline_aa<> m_rasterizer;
    scanline_u8 m_scanline_aa;
    scanline_storage_aa8 m_scanlines_aa;
    scanline_storage_lcd m_scanlines_lcd;
    scanline_storage_bin m_scanlines_bin;
};
}
