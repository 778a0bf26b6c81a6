// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/Plot.h"

#include <gtest/gtest.h>
#include <png.h>

using namespace lodex;

namespace
{
// The picture of a piece of 1000 frames a second at 60 beats a minute, all of it with one gain.
struct Picture
{
    Picture(int frames, float gain, double ppq)
    {
        Plot plot({"title", "1/4", 60.0, 1000, frames});
        std::vector<float> silence(size_t(frames), 0.0f), record(size_t(frames), 1.0f - 2.0f * gain);
        RenderBlock block;
        block.frames = frames;
        block.transport = {60.0, ppq};
        for (int i = 0; i < 2; ++i)
            block.input[i] = block.output[i] = silence.data();
        block.gainRecord = record.data();
        plot.add(block);
        const auto file = plot.png();

        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        EXPECT_TRUE(png_image_begin_read_from_memory(&image, file.data(), file.size()));
        image.format = PNG_FORMAT_RGB;
        width = int(image.width);
        pixels.resize(PNG_IMAGE_SIZE(image));
        EXPECT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    }
    int red(int x, int y) const { return pixels[(size_t(y) * size_t(width) + size_t(x)) * 3]; }
    // The places along a row, or down a column, that are brighter than both of their neighbours.
    std::vector<int> linesInRow(int y, int from, int to) const
    {
        std::vector<int> found;
        for (int x = from; x < to; ++x)
            if (red(x, y) > red(x - 1, y) + 4 && red(x, y) > red(x + 1, y) + 4)
                found.push_back(x);
        return found;
    }
    int brightestInColumn(int x, int from, int to) const
    {
        int best = from;
        for (int y = from; y < to; ++y)
            if (red(x, y) > red(x, best))
                best = y;
        return best;
    }

    int width = 0;
    std::vector<uint8_t> pixels;
};
}

TEST(Plot, DrawsItsBeatLinesWhereTheBeatsFall)
{
    // 4 s over 1476 pixels from 84 on: a beat is 369 pixels. From position 0.25 the first falls at 0.75 s.
    const Picture picture(4000, 1.0f, 0.25);
    const std::vector<int> expected = {84 + 276, 84 + 645, 84 + 1014, 84 + 1383};
    EXPECT_EQ(picture.linesInRow(200, 90, 1550), expected);
}

TEST(Plot, DrawsTheGainAtItsHeight)
{
    for (const auto& [gain, y] : {std::pair(1.0f, 576), std::pair(0.25f, 738), std::pair(0.0f, 792)})
    {
        const Picture picture(2000, gain, 0.1);
        EXPECT_NEAR(picture.brightestInColumn(700, 566, 803), y, 1) << gain;
    }
}
