// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <locale.h>

namespace Core
{
std::optional<double> findNumber(const char* text)
{
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    if (!text)
        return {};
    char* end = nullptr;
    const double number = strtod_l(text, &end, plain);
    return end == text ? std::optional<double>() : number;
}

double parseDouble(const char* text)
{
    return findNumber(text).value_or(0.0);
}

std::string formatFixed(double value, int decimals)
{
    constexpr int mostBefore = 311; // sign, 309 digits, point
    constexpr int mostDecimals = 200;
    char buffer[mostBefore + mostDecimals];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                   std::min(decimals, mostDecimals));
    return {buffer, end.ptr};
}
}
