// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/Packing.h"

#include <gtest/gtest.h>

TEST(Packing, FoldsInWindowsThatOverlap)
{
    const std::string expected[] = {"",      "0",      "01",      "012",      "3210",
                                    "32104", "325401", "3254016", "32547610", "325476108"};
    for (const std::string& folded : expected)
    {
        const std::string plain = std::string("0123456789").substr(0, folded.size());
        std::string data = plain;
        Orbel::fold(data);
        EXPECT_EQ(data, folded);
        Orbel::unfold(data);
        EXPECT_EQ(data, plain);
    }
}
