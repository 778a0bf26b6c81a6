// The interface's texts, UTF-16 of at most 127 code units and their end, from and to UTF-8. [any thread]
#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <string>
#include <string_view>

namespace Steinberg::Vst
{
constexpr size_t kTextUnits = sizeof(String128) / sizeof(TChar); // the end included

// Cut so that no character is torn. A text that is no UTF-8 is taken byte by byte, as Latin-1.
void copyText(std::string_view utf8, String128 out);
// Up to the end, or kTextUnits. Null is the empty text, and so is what is no UTF-16.
std::string textOf(const TChar* text);
}
