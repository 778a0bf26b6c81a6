#include "CORE/CString.h"
#include "CORE/WholeCharacters.h"

#include <gtest/gtest.h>

TEST(CString, HoldsTextsUpToItsCapacityLessOneAndTouchesNothingBehind)
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

TEST(WholeCharacters, AreNeverCutInTheMiddle)
{
    const std::string_view text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5";
    constexpr size_t starts[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 10};
    for (size_t most = 0; most < std::size(starts); ++most)
    {
        EXPECT_EQ(Core::wholeCharacters(text, most), text.substr(0, starts[most])) << most;
        EXPECT_EQ(Core::withoutHalfCharacter(text.substr(0, most)), text.substr(0, starts[most])) << most;
    }
    for (const std::string_view other : {"x\xC4r\xC3", "\x80\xC3", "\xFF", "\xC1", "\xF5\x80\x80", ""})
        EXPECT_EQ(Core::withoutHalfCharacter(other), other) << "it is no UTF-8";
}
