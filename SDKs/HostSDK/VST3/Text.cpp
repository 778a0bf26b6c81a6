#include "HostSDK/VST3/Text.h"

#include <algorithm>
#include <codecvt>
#include <locale>

namespace Steinberg::Vst
{
// Answers an empty text where the other form has none.
static auto converter()
{
    return std::wstring_convert<std::codecvt_utf8_utf16<char16_t>, char16_t>("", u"");
}

static bool isFirstOfPair(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

void copyText(std::string_view utf8, String128 out)
{
    std::u16string text = converter().from_bytes(utf8.data(), utf8.data() + utf8.size());
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
    return converter().to_bytes(text, end);
}
}
