// SPDX-License-Identifier: GPL-3.0-or-later
// PNG files of any kind, made in memory.
#pragma once

#include <cstdint>
#include <png.h>
#include <stdexcept>
#include <string>
#include <vector>

struct Png
{
    unsigned width;
    unsigned height;
    int colorType = PNG_COLOR_TYPE_RGB_ALPHA;
    std::vector<unsigned char> samples{}; // row by row, as the file packs them
    int bitDepth = 8;
    bool interlaced = false;
    std::vector<png_color> palette{};
    std::vector<unsigned char> paletteAlpha{};
    int transparentGrey = -1; // -1: none

    operator std::string() const
    {
        std::string file;
        png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, giveUp, nullptr);
        png_infop info = png_create_info_struct(png);
        png_set_write_fn(png, &file, append, nullptr);
        png_set_IHDR(png, info, width, height, bitDepth, colorType,
                     interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        if (!palette.empty())
            png_set_PLTE(png, info, palette.data(), int(palette.size()));
        if (!paletteAlpha.empty())
            png_set_tRNS(png, info, paletteAlpha.data(), int(paletteAlpha.size()), nullptr);
        png_color_16 key{};
        key.gray = static_cast<png_uint_16>(transparentGrey);
        if (transparentGrey >= 0)
            png_set_tRNS(png, info, nullptr, 1, &key);
        png_write_info(png, info);
        const size_t rowBytes = png_get_rowbytes(png, info);
        if (samples.size() != rowBytes * height)
            throw std::logic_error("the samples are not those of the picture");
        for (int pass = png_set_interlace_handling(png); pass > 0; --pass)
            for (unsigned y = 0; y < height; ++y)
                png_write_row(png, &samples[y * rowBytes]);
        png_write_end(png, info);
        png_destroy_write_struct(&png, &info);
        return file;
    }

private:
    static void append(png_structp png, png_bytep bytes, size_t count)
    {
        static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<char*>(bytes), count);
    }
    [[noreturn]] static void giveUp(png_structp, png_const_charp words) { throw std::logic_error(words); }
};
