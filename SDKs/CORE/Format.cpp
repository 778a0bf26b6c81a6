// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Format.h"

#include "CORE/Utf8.h"

#include <algorithm>
#include <cstdio>
#include <locale.h>

namespace Core
{
namespace
{
// The "C" locale for this thread alone, as long as the object lives.
class PlainLocale
{
public:
    PlainLocale() : former(uselocale(plain())) {}
    ~PlainLocale() { uselocale(former); }
    PlainLocale(const PlainLocale&) = delete;
    PlainLocale& operator=(const PlainLocale&) = delete;

private:
    static locale_t plain()
    {
        static const locale_t made = newlocale(LC_ALL_MASK, "C", nullptr);
        return made;
    }

    locale_t former;
};
}

std::string formatBounded(size_t longest, const char* format, va_list arguments)
{
    if (!format)
        return {};
    const PlainLocale locale;
    va_list toMeasure;
    va_copy(toMeasure, arguments);
    const int needed = std::vsnprintf(nullptr, 0, format, toMeasure);
    va_end(toMeasure);
    std::string text(needed > 0 ? std::min(size_t(needed), longest) : 0, '\0');
    if (!text.empty())
        std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    if (needed > 0 && size_t(needed) > longest)
        text.resize(Utf8::withoutHalfCharacter(text).size());
    return text;
}
}
