#include "CORE/CString.h"

#include <cstring>
#include <gtest/gtest.h>

TEST(CString, HoldsTextsUpToItsCapacityLessOneAndTouchesNothingBehind)
{
    struct
    {
        int capacity;
        const char* text;
        const char* held;
    } const cases[] = {{4, "", ""},        {4, "ab", "ab"},  {4, "abc", "abc"},
                       {4, "abcd", "abc"}, {4, nullptr, ""}, {1, "abc", ""}};
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

TEST(CString, LeavesABufferOfNoBytesAlone)
{
    char buffer[3] = "##", out[3] = "##";
    for (int capacity : {0, -1})
    {
        Core::CString view(buffer + 1, capacity);
        view.set("text");
        view.copyTo(out + 1);
        EXPECT_EQ(view.compare("text"), 0);
    }
    EXPECT_STREQ(buffer, "##");
    EXPECT_STREQ(out, "##");
}

TEST(CString, ComparesNoMoreThanItCanHold)
{
    char buffer[4];
    Core::CString view(buffer, 4);
    view.set("abc");
    EXPECT_EQ(view.compare("abc"), 0);
    EXPECT_EQ(view.compare("abcdef"), 0);
    EXPECT_LT(view.compare("abd"), 0);
    EXPECT_GT(view.compare("ab"), 0);
    EXPECT_GT(view.compare(nullptr), 0);
}

TEST(CString, EndsTheCopyOfABufferWithoutAnEnd)
{
    char buffer[4], out[4];
    std::memset(buffer, 'x', sizeof buffer);
    Core::CString(buffer, 4).copyTo(out);
    EXPECT_STREQ(out, "xxx");
}

TEST(CString, BringsItsOwnEmptyBuffer)
{
    Core::CStringBufferd<64> text;
    EXPECT_STREQ(text.get(), "");
    text.set(std::string(100, 'y').c_str());
    EXPECT_EQ(text.get(), std::string(63, 'y'));
}
