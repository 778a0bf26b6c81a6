// SPDX-License-Identifier: GPL-3.0-or-later
// The interface's texts, UTF-16 of at most 127 code units and their end, from and to UTF-8. [any thread]
#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <string>
#include <string_view>

namespace Steinberg::Vst
{
constexpr size_t kTextUnits = sizeof(String128) / sizeof(TChar); // the end included

// Cut so that no character is torn. A text that is not valid UTF-8 is taken byte by byte, as Latin-1.
void copyText(std::string_view utf8, String128 out);
// Up to the closing 0, or kTextUnits. Null gives an empty text, and so does invalid UTF-16.
std::string textOf(const TChar* text);
}
