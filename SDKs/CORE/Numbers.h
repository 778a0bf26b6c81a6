// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers as text, independent of the locale: the host's decides neither the decimal sign that
// is printed nor the one that is read.
#pragma once

#include <optional>
#include <string>

namespace Core
{
// The number at the start of text, as atof reads it in the "C" locale (blanks, sign, decimal or
// hexadecimal digits, exponent, "inf", "nan"), if there is one. Null counts as empty.
std::optional<double> findNumber(const char* text);
// The same; 0 if text does not begin with a number.
double parseDouble(const char* text);

// value with the given count of decimals (at most 200), as "%.<decimals>f" prints it in the "C" locale.
std::string formatFixed(double value, int decimals);
}
