// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Format.h"
#include "CORE/Numbers.h"
#include "support/TempFolder.h"

#include <clocale>
#include <cmath>
#include <gtest/gtest.h>

static std::string formatted(size_t longest, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    auto text = Core::formatBounded(longest, format, arguments);
    va_end(arguments);
    return text;
}

TEST(Numbers, ReadsWhatStandsAtTheStart)
{
    struct
    {
        const char* text;
        double value;
    } const cases[] = {{"  -2.25dB", -2.25}, {"+.5", 0.5},       {"1e3ms", 1000.0}, {"0x10", 16.0},
                       {"1,5", 1.0},         {"", 0.0},          {"-", 0.0},        {nullptr, 0.0},
                       {"inf", INFINITY},    {"1e999", INFINITY}};
    for (const auto& c : cases)
        EXPECT_EQ(Core::parseDouble(c.text), c.value) << (c.text ? c.text : "null");
    EXPECT_TRUE(std::isnan(Core::parseDouble("nan")));
}

TEST(Numbers, PrintsAsTheCLibraryDoes)
{
    for (double value :
         {0.0, -0.0, 0.125, 0.375, -0.004, 2.5, 3.5, 1e15 + 0.3, 1.7976931348623157e308, -HUGE_VAL})
        for (int decimals : {0, 1, 2, 17, 200})
        {
            char expected[600];
            std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
            EXPECT_EQ(Core::formatFixed(value, decimals), expected) << decimals;
        }
    EXPECT_EQ(Core::formatFixed(1.0, 1000), "1." + std::string(200, '0'));
}

TEST(Format, PrintsAtMostTheLongest)
{
    EXPECT_EQ(formatted(6, "%s-%02i", "abc", 7), "abc-07");
    EXPECT_EQ(formatted(5, "%s-%02i", "abc", 7), "abc-0");
    EXPECT_EQ(formatted(0, "%d", 7), "");
}

// A host in Germany: "1,5". Needs the sources of locales (package locales).
TEST(Numbers, AreIndependentOfTheLocale)
{
    const TempFolder folder;
    const auto command = "localedef -i de_DE -f UTF-8 " + folder / "de_DE.UTF-8" + " >/dev/null 2>&1";
    if (!std::filesystem::exists("/usr/share/i18n/locales/de_DE") || std::system(command.c_str()) < 0)
        GTEST_SKIP() << "no locale with a comma to be had";
    const TempEnvironment place("LOCPATH", folder.path.c_str());
    ASSERT_TRUE(std::setlocale(LC_ALL, "de_DE.UTF-8"));
    char host[16];
    std::snprintf(host, sizeof host, "%.1f", 1.5);
    const auto own = Core::formatFixed(1.5, 1) + " " + formatted(100, "%.1f", 1.5);
    const double parsed = Core::parseDouble("1.5");
    char after[16];
    std::snprintf(after, sizeof after, "%.1f", 1.5);
    std::setlocale(LC_ALL, "C");
    EXPECT_STREQ(host, "1,5");
    EXPECT_EQ(own, "1.5 1.5");
    EXPECT_EQ(parsed, 1.5);
    EXPECT_STREQ(after, "1,5") << "the host's locale was changed";
}
