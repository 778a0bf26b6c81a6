// Glyphs of TrueType faces for agg::font_cache_pool: mono, grey, in thirds of a pixel, or as outlines.
//
// FreeType reads and hints, AGG rasterises: text comes out the same on every machine. A glyph is asked for in
// three steps: prepare_glyph, then its size, bounds and advances, then write_glyph_to. font_signature() is
// the key of the cache that it belongs in: whatever changes the shape of glyphs changes the key.
//
// Faces are kept by name: one that is loaded again under a known name is the one that is known, whatever
// memory comes with it.
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
    glyph_ft2_lcd = 2, // bounds in thirds of a pixel across
    glyph_ft2_outline = 3
};

enum glyph_ft2_hining
{
    glyph_ft2_hint_none = 0,
    glyph_ft2_hint_native = 1,
    glyph_ft2_hint_auto = 2
};

// [window thread]  One thread at a time; each engine has a FreeType of its own.
class font_engine_ft2_lcd
{
public:
    // What agg::font_cache_manager reads the serialised glyphs with.
    typedef serialized_scanlines_adaptor_aa<int8u> gray8_adaptor_type;
    typedef serialized_scanlines_adaptor_bin mono_adaptor_type;
    typedef serialized_integer_path_adaptor<int, 6> path_adaptor_type;

    // Keeps so many faces, and gives up the one loaded first for one more.
    explicit font_engine_ft2_lcd(unsigned int max_faces = 32);
    ~font_engine_ft2_lcd();
    font_engine_ft2_lcd(const font_engine_ft2_lcd&) = delete;
    font_engine_ft2_lcd& operator=(const font_engine_ft2_lcd&) = delete;

    // The face that is asked from here on, from memory, which has to stay as long as the engine, or from the
    // file of that name for null. False if it is no font; the former face stays.
    bool load_font(const char* name, unsigned int face_index, glyph_ft2_lcd_type type, const char* memory,
                   long length);

    // Pixels to an em, to a 64th; across the same as upright, or what width says (0: the same). False for
    // what is no size, or above 1000.
    bool height(double h);
    bool width(double w);
    void hinting(glyph_ft2_hining mode);
    // With true, glyphs have their top at the lower y, as pictures do.
    void flip_y(bool flip);

    double height() const { return m_height / 64.0; }
    double width() const { return m_width / 64.0; }
    glyph_ft2_hining hinting() const { return m_hinting; }
    bool flip_y() const { return m_flip_y; }
    // Pixels from the base line up, in proportion to the face's line of that height; 0 without a face.
    double ascender() const;

    // Changes with the signature.
    int change_stamp() const { return m_change_stamp; }
    const char* font_signature() const { return m_signature.c_str(); }

    // The glyph of a character; the face's own stand-in if it has none. False without a face, for a damaged
    // glyph and for one that would need more than 16 Mi (thirds of) pixels.
    bool prepare_glyph(unsigned int code);
    unsigned glyph_index() const { return m_glyph_index; }
    unsigned data_size() const { return m_data_size; }
    glyph_data_type data_type() const { return m_data_type; }
    const rect_i& bounds() const { return m_bounds; }
    double advance_x() const { return m_advance_x; }
    double advance_y() const { return m_advance_y; }
    // data_size() bytes.
    void write_glyph_to(unsigned char* data) const;

    // Adds, in pixels, what brings these two glyph indexes together. False, and nothing, if there is none.
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
    trans_affine m_affine; // of the outline: thirds across
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
