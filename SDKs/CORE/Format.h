// SPDX-License-Identifier: GPL-3.0-or-later
// Printf-style texts, bounded and independent of the locale: the host's does not decide the decimal sign.
// Only our functions that take a format call it.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace Core
{
// [any thread]  What format and arguments print, cut to longest bytes but never inside a character. A null
// format, or one that the C library refuses, gives the empty text.
[[gnu::format(printf, 2, 0)]] std::string formatBounded(size_t longest, const char* format,
                                                        va_list arguments);
}
