// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/CString.h"

#include <gtest/gtest.h>

TEST(CString, HoldsTextsUpToItsCapacityLessOneAndTouchesNothingBeyond)
{
    struct
    {
        int capacity;
        const char* text;
        const char* held;
    } const cases[] = {
        {4, "ab", "ab"}, {4, "abc", "abc"}, {4, "abcd", "abc"}, {4, nullptr, ""}, {1, "abc", ""}};
    for (const auto& c : cases)
    {
        SCOPED_TRACE(testing::Message() << (c.text ? c.text : "null") << " in " << c.capacity);
        char buffer[9] = "########";
        Core::CString view(buffer, c.capacity);
        view.set(c.text);
        EXPECT_STREQ(view.get(), c.held);
        EXPECT_STREQ(buffer + c.capacity, &"########"[c.capacity]);

        char copy[9] = "########";
        view.copyTo(copy);
        EXPECT_STREQ(copy, c.held);
        EXPECT_STREQ(copy + c.capacity, &"########"[c.capacity]);
    }
}
