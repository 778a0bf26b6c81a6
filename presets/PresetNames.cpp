// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetNames.h"

#include "CORE/Utf8.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace Utf8 = Core::Utf8;

namespace Tovra
{
namespace
{
constexpr size_t longestFileName = 255; // bytes, in the usual file systems
constexpr char32_t afterAllCharacters = 0x200000;

bool isForbidden(char c)
{
    return c == '/' || static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

// Takes the first character off text, which is not empty.
char32_t takeCharacter(std::string_view& text)
{
    const Utf8::CodePoint next = Utf8::decode(text);
    text.remove_prefix(next.length);
    return next.form == Utf8::Form::broken ? afterAllCharacters + next.value : next.value;
}

char32_t upperCaseOf(char32_t character)
{
    if (character < 0x80)
        return character >= 'a' && character <= 'z' ? character - 'a' + 'A' : character;
    static const locale_t plain = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return plain && character <= Utf8::highestCodePoint ? char32_t(towupper_l(wint_t(character), plain))
                                                        : character;
}
}

std::string baseNameOf(std::string_view path)
{
    const auto name = path.substr(path.rfind('/') + 1); // npos + 1 is 0
    return std::string(name.substr(0, name.rfind('.')));
}

std::string sanitizedName(std::string_view name)
{
    if (!name.empty() && name.find_first_not_of('.') == name.npos)
        return "_";
    std::string sanitized(name);
    std::replace_if(sanitized.begin(), sanitized.end(), isForbidden, '_');
    return sanitized;
}

std::string fileNameFor(std::string_view name, std::string_view extension)
{
    std::string result = sanitizedName(name);
    if (result.empty() || result.front() == '.')
        result.replace(0, 1, "_");
    const size_t room = longestFileName - std::min(extension.size(), longestFileName);
    return std::string(Utf8::cut(result, room)).append(extension);
}

int compareUpperCase(std::string_view a, std::string_view b)
{
    while (!a.empty() && !b.empty())
    {
        const char32_t one = upperCaseOf(takeCharacter(a));
        const char32_t other = upperCaseOf(takeCharacter(b));
        if (one != other)
            return one < other ? -1 : 1;
    }
    return int(!a.empty()) - int(!b.empty());
}
}
