// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures as they have to look: tests/golden/<name>.png, compared with what a test has drawn.
//
// On a difference the picture and a map of the differences are left in the build's "pictures" folder, and the
// message says where. A golden picture that is missing fails, too. With LODEX_GOLDEN=renew in the environment
// (script/golden) each one is written anew in place of the comparison, and the change shows in review.
#pragma once

#include <gtest/gtest.h>
#include <string>

// Rows of blue, green, red and an alpha that doesn't matter, rowBytes apart.
struct PictureMemory
{
    const unsigned char* pixels;
    unsigned int width;
    unsigned int height;
    int rowBytes;
};

struct PictureTolerance
{
    int channel = 2;          // a pixel differs if one of its channels does by more than this
    unsigned long pixels = 0; // so many may
};

testing::AssertionResult looksLikeGolden(const PictureMemory& picture, const std::string& name,
                                         PictureTolerance tolerance = {});
