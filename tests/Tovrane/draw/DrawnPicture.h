// SPDX-License-Identifier: GPL-3.0-or-later
// A small picture with a renderer on it, and its pixels as numbers.
#pragma once

#include "Tovrane/draw/PelmoAGG.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <ostream>
#include <vector>

struct Pixel
{
    int blue, green, red, alpha; // as they lie in memory

    bool operator==(const Pixel&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Pixel& p)
{
    return out << "(b " << p.blue << ", g " << p.green << ", r " << p.red << ", a " << p.alpha << ")";
}

struct DrawnPicture
{
    // Opaque black.
    DrawnPicture(int pixelsWide, int pixelsHigh)
        : width(pixelsWide), height(pixelsHigh), memory(size_t(width) * size_t(height) * 4)
    {
        fill({0, 0, 0, 255});
        renderer.attach(memory.data(), unsigned(width), unsigned(height), width * 4);
    }

    Tovra::PelmoAGG::Image image() { return {memory.data(), unsigned(width), unsigned(height), width * 4}; }

    Pixel at(int x, int y) const
    {
        const unsigned char* p = &memory[size_t(y * width + x) * 4];
        return {p[0], p[1], p[2], p[3]};
    }

    void set(int x, int y, const Pixel& p)
    {
        const std::array<int, 4> bytes = {p.blue, p.green, p.red, p.alpha};
        for (size_t i = 0; i < 4; ++i)
            memory[size_t(y * width + x) * 4 + i] = static_cast<unsigned char>(bytes[i]);
    }

    void fill(const Pixel& p)
    {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                set(x, y, p);
    }

    // The number of pixels that differ from p.
    int countOther(const Pixel& p) const
    {
        int count = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                count += at(x, y) != p;
        return count;
    }

    // The area of white on black, in pixels.
    double area() const
    {
        double sum = 0.0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                sum += at(x, y).green / 255.0;
        return sum;
    }

    int width;
    int height;
    std::vector<unsigned char> memory;
    Tovra::PelmoAGG renderer;
};

constexpr Pixel blackPixel{0, 0, 0, 255};
constexpr Pixel whitePixel{255, 255, 255, 255};
