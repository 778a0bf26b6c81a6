// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/IOSBitmap.h"
#include "support/Golden.h"
#include "tools/gallery/GalleryPage.h"

#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <vector>

static PictureMemory memoryOf(Tovra::IOSBitmap& bitmap)
{
    return {bitmap.getPixelPtr(), bitmap.getWidth(), bitmap.getHeight(), bitmap.getRowBytes()};
}

namespace Gallery
{
static void PrintTo(const Page& page, std::ostream* out)
{
    *out << page.name;
}
}

class GoldenPages : public testing::TestWithParam<Gallery::Page>
{
};

TEST_P(GoldenPages, LookAsTheyDid)
{
    Gallery::Show show(GetParam());
    EXPECT_TRUE(looksLikeGolden(memoryOf(show.picture()), std::string("gallery-") + GetParam().name));
}

// The pages that show what a scale changes.
TEST_P(GoldenPages, LookAsTheyDidAtOtherScales)
{
    const std::string name = GetParam().name;
    if (name != "shapes" && name != "texts" && name != "pictures" && name != "views")
        GTEST_SKIP() << "drawn by what the other pages show";
    for (const auto& [scale, suffix] : {std::pair(1.5, "-1.5x"), {2.0, "-2x"}, {3.0, "-3x"}})
    {
        Gallery::Show show(GetParam(), scale);
        EXPECT_TRUE(looksLikeGolden(memoryOf(show.picture()), "gallery-" + name + suffix));
    }
}

// Whatever part is painted anew, the picture stays as it is.
TEST_P(GoldenPages, StayTheSameWhenPartsArePaintedAgain)
{
    Gallery::Show show(GetParam());
    const PictureMemory memory = memoryOf(show.picture());
    const std::vector<unsigned char> whole(memory.pixels,
                                           memory.pixels + long(memory.height) * memory.rowBytes);
    for (const Tovra::CRect& part : {Tovra::CRect(0, 0, 640, 420), Tovra::CRect(0, 57, 640, 231)})
    {
        show.frame().addDirtyRect(part);
        show.picture();
        EXPECT_TRUE(std::equal(whole.begin(), whole.end(), memory.pixels)) << "from " << part.top;
    }
}

INSTANTIATE_TEST_SUITE_P(Gallery, GoldenPages, testing::ValuesIn(Gallery::pages()),
                         [](const auto& page) { return std::string(page.param.name); });

TEST(PictureComparison, FindsASinglePixelAndAMissingPicture)
{
    if (std::getenv("LODEX_GOLDEN"))
        GTEST_SKIP() << "pictures are being renewed";
    Gallery::Show show(Gallery::pages().front());
    PictureMemory memory = memoryOf(show.picture());
    std::vector<unsigned char> bytes(memory.pixels, memory.pixels + long(memory.height) * memory.rowBytes);
    memory.pixels = bytes.data();
    unsigned char& one = bytes[size_t(memory.rowBytes) * 10 + 401]; // of the plain ground
    const std::string name = std::string("gallery-") + Gallery::pages().front().name;
    one = static_cast<unsigned char>(one + 2);
    EXPECT_TRUE(looksLikeGolden(memory, name));
    one = static_cast<unsigned char>(one + 1);
    EXPECT_FALSE(looksLikeGolden(memory, name));
    EXPECT_TRUE(looksLikeGolden(memory, name, {.channel = 2, .pixels = 1}));
    memory.height -= 1;
    EXPECT_FALSE(looksLikeGolden(memory, name));
    EXPECT_FALSE(looksLikeGolden(memory, "a picture that nobody keeps"));
}
