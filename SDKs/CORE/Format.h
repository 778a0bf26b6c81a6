// Printf-style texts, bounded and the same in every country: the host's locale does not decide the
// decimal sign. Underneath every function of the house that takes a format; nobody else calls it.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace Core
{
// [any thread]  What format and arguments print, cut to longest characters. A null format, or one that
// the C library refuses, gives the empty text.
[[gnu::format(printf, 2, 0)]] std::string formatBounded(size_t longest, const char* format,
                                                        va_list arguments);
}
