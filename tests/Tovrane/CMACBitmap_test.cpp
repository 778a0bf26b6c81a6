#include "Tovrane/CMACBitmap.h"
#include "Tovrane/IBlitTarget.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

using Tovra::CMACBitmap;
using Tovra::CRect;

TEST(CMACBitmap, MakesCleanPixelsOfTheSizeAskedFor)
{
    CMACBitmap bitmap;
    const struct
    {
        unsigned w, h, width, height;
    } cases[] = {{3, 2, 3, 2}, {0, 5, 1, 5}, {7, 0, 7, 1}, {4096, 4096, 4096, 4096}, {3, 2, 3, 2}};
    for (const auto& c : cases)
    {
        ASSERT_TRUE(bitmap.setSize(c.w, c.h));
        EXPECT_EQ(bitmap.getWidth(), c.width);
        EXPECT_EQ(bitmap.getHeight(), c.height);
        EXPECT_EQ(bitmap.getRowBytes(), int(c.width * 4));
        EXPECT_EQ(bitmap.getTotalBytes(), c.width * c.height * 4);
        unsigned char* const pixels = bitmap.getPixelPtr();
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pixels) % 16, 0u);
        EXPECT_TRUE(std::all_of(pixels, pixels + bitmap.getTotalBytes(), [](int byte) { return byte == 0; }));
        std::fill_n(pixels, bitmap.getTotalBytes(), static_cast<unsigned char>(0xff));
    }
}

TEST(CMACBitmap, HasNoPixelsWhereTheyWouldBeTooMany)
{
    for (const auto& [w, h] :
         {std::pair(4097u, 4096u), {1000000000u, 1u}, {0xffffffffu, 0xffffffffu}, {0x40000001u, 4u}})
    {
        CMACBitmap bitmap;
        ASSERT_TRUE(bitmap.setSize(2, 2));
        EXPECT_FALSE(bitmap.setSize(w, h));
        EXPECT_EQ(bitmap.getPixelPtr(), nullptr);
        EXPECT_EQ(bitmap.getWidth(), 0u);
        EXPECT_EQ(bitmap.getTotalBytes(), 0u);
    }
}

TEST(CMACBitmap, ShowsItselfOnATarget)
{
    struct Target : Tovra::IBlitTarget
    {
        void blit(const Tovra::BlitPicture& picture, const CRect& at) override
        {
            shown = picture;
            place = at;
        }
        std::optional<Tovra::BlitPicture> shown;
        CRect place;
    } target;
    Tovra::IBlitTarget* const context = &target;

    CMACBitmap bitmap;
    bitmap.drawToContext(context, nullptr, nullptr);
    EXPECT_FALSE(target.shown) << "without pixels";
    bitmap.setSize(5, 3);
    bitmap.drawToContext(nullptr, nullptr, nullptr);
    bitmap.drawToContext(context, nullptr, nullptr);
    ASSERT_TRUE(target.shown);
    EXPECT_EQ(target.shown->pixels, bitmap.getPixelPtr());
    EXPECT_EQ(target.shown->width, 5u);
    EXPECT_EQ(target.shown->rowBytes, 20);
    EXPECT_FALSE(target.shown->flipped);
    EXPECT_EQ(target.place, CRect(0, 0, 5, 3));

    bitmap.setFlipped(true);
    const CRect place(10, 20, 30, 40), part(1, 1, 2, 2);
    bitmap.drawToContext(context, &place, &part);
    EXPECT_TRUE(target.shown->flipped);
    EXPECT_EQ(target.place, place);
    EXPECT_EQ(target.shown->height, 3u) << "always the whole picture";
}
