#include "presets/PresetNames.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace Tovra
{
namespace
{
constexpr size_t longestFileName = 255; // bytes, in all file systems that matter
constexpr int longestTail = 3;          // bytes of a character behind its first
constexpr char32_t highestCharacter = 0x10FFFF;
constexpr char32_t behindAllCharacters = 0x200000;

bool isUnbearable(char c)
{
    return c == '/' || static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

bool isTailByte(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::string_view cutAtCharacter(std::string_view text, size_t length)
{
    if (text.size() <= length)
        return text;
    for (int i = 0; i < longestTail && length > 0 && isTailByte(text[length]); ++i)
        --length;
    return text.substr(0, length);
}

// Takes the first character off text, which is not empty.
char32_t takeCharacter(std::string_view& text)
{
    const unsigned first = static_cast<unsigned char>(text[0]);
    if (first < 0x80)
    {
        text.remove_prefix(1);
        return first;
    }
    const size_t length = first < 0xE0 ? 2 : (first < 0xF0 ? 3 : 4);
    const bool whole = !isTailByte(text[0]) && text.size() >= length &&
                       std::all_of(text.begin() + 1, text.begin() + long(length), isTailByte);
    if (!whole)
    {
        text.remove_prefix(1);
        return behindAllCharacters + first;
    }
    char32_t character = first & (0x7Fu >> length);
    for (size_t i = 1; i < length; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    text.remove_prefix(length);
    return character;
}

char32_t upperCaseOf(char32_t character)
{
    if (character < 0x80)
        return character >= 'a' && character <= 'z' ? character - 'a' + 'A' : character;
    static const locale_t plain = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return plain && character <= highestCharacter ? char32_t(towupper_l(wint_t(character), plain))
                                                  : character;
}
}

std::string baseNameOf(std::string_view path)
{
    const auto name = path.substr(path.rfind('/') + 1); // npos + 1 is 0
    return std::string(name.substr(0, name.rfind('.')));
}

std::string bearableName(std::string_view name)
{
    if (!name.empty() && name.find_first_not_of('.') == name.npos)
        return "_";
    std::string bearable(name);
    std::replace_if(bearable.begin(), bearable.end(), isUnbearable, '_');
    return bearable;
}

std::string fileNameFor(std::string_view name, std::string_view extension)
{
    std::string result = bearableName(name);
    if (result.empty() || result.front() == '.')
        result.replace(0, 1, "_");
    const size_t room = longestFileName - std::min(extension.size(), longestFileName);
    return std::string(cutAtCharacter(result, room)).append(extension);
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
