// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/ScaledCopy.h"

#include <gmock/gmock.h>
#include <vector>

using namespace Tovra;
using testing::ElementsAre;

namespace
{
// Grey values as a picture with a gap behind each row.
struct Grey
{
    Grey(unsigned w, unsigned h, const std::vector<unsigned char>& values, bool flipped)
        : bytes(std::size_t(w * 4 + 8) * h)
    {
        for (unsigned i = 0; i < w * h; ++i)
            for (unsigned part = 0; part < 3; ++part)
                bytes[std::size_t(i / w) * (w * 4 + 8) + i % w * 4 + part] = values[i];
        picture = {bytes.data(), w, h, int(w * 4 + 8), flipped};
    }
    std::vector<unsigned char> bytes;
    BlitPicture picture{};
};

std::uint32_t grey(unsigned value)
{
    return 0xff000000u | value * 0x10101u;
}
}

TEST(ScaledCopy, KeepsPicturesOfTheRightSizeAsTheyAre)
{
    std::vector<std::uint32_t> out(4);
    copyPicture(Grey(2, 2, {1, 2, 3, 4}, false).picture, out.data());
    EXPECT_THAT(out, ElementsAre(grey(1), grey(2), grey(3), grey(4)));
    copyPicture(Grey(2, 2, {1, 2, 3, 4}, true).picture, out.data());
    EXPECT_THAT(out, ElementsAre(grey(3), grey(4), grey(1), grey(2)));
}

TEST(ScaledCopy, GoesEvenlyFromPixelToPixel)
{
    std::vector<std::uint32_t> wide(4);
    scalePicture(Grey(2, 1, {0, 200}, false).picture, wide.data(), 4, 1);
    EXPECT_THAT(wide, ElementsAre(grey(0), grey(50), grey(150), grey(200)));
    std::vector<std::uint32_t> one(1);
    scalePicture(Grey(2, 2, {0, 100, 100, 200}, true).picture, one.data(), 1, 1);
    EXPECT_EQ(one[0], grey(100));
    std::vector<std::uint32_t> white(9);
    scalePicture(Grey(1, 1, {255}, false).picture, white.data(), 3, 3);
    EXPECT_THAT(white, testing::Each(grey(255)));
}
