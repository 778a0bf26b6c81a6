// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSDK/VST3/Text.h"

#include "CORE/Utf8.h"

#include <algorithm>

namespace Utf8 = Core::Utf8;

namespace Steinberg::Vst
{
constexpr char32_t firstPair = 0x10000; // from here on two units make a code point

static bool isFirstOfPair(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

static bool isSecondOfPair(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

static void append(std::u16string& text, char32_t codePoint)
{
    if (codePoint >= firstPair)
        text += char16_t(0xD800 + ((codePoint - firstPair) >> 10));
    text += char16_t(codePoint >= firstPair ? 0xDC00 + (codePoint & 0x3FF) : codePoint);
}

// Surrogates count as characters of their own, and a last character that ends early is left out. Empty if the
// text is no UTF-8.
static std::u16string utf16Of(std::string_view text)
{
    std::u16string result;
    while (!text.empty() && text.size() >= Utf8::sequenceLength(text[0]))
    {
        const Utf8::CodePoint next = Utf8::decode(text);
        const bool isCharacter = next.form == Utf8::Form::valid || Utf8::isSurrogate(next.value);
        if (!isCharacter || Utf8::sequenceLength(text[0]) != next.length)
            return {};
        append(result, next.value);
        text.remove_prefix(next.length);
    }
    return result;
}

void copyText(std::string_view utf8, String128 out)
{
    std::u16string text = utf16Of(utf8);
    if (text.empty())
        for (const char byte : utf8)
            text += char16_t(static_cast<unsigned char>(byte));
    if (text.size() >= kTextUnits)
        text.resize(kTextUnits - (isFirstOfPair(text[kTextUnits - 2]) ? 2 : 1));
    out[std::copy(text.begin(), text.end(), out) - out] = 0;
}

std::string textOf(const TChar* text)
{
    const TChar* const end = text ? std::find(text, text + kTextUnits, TChar(0)) : nullptr;
    std::string result;
    while (text != end)
    {
        const char16_t unit = *text++;
        if (isFirstOfPair(unit) && text == end)
            break;
        const bool isPair = isFirstOfPair(unit) && isSecondOfPair(*text);
        if (Utf8::isSurrogate(unit) && !isPair)
            return {};
        result += Utf8::encode(isPair ? firstPair + ((unit & 0x3FFu) << 10) + (*text++ & 0x3FFu) : unit);
    }
    return result;
}
}
