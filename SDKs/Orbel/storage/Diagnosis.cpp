// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/Diagnosis.h"

#include "CORE/Utf8.h"

namespace Orbel
{
std::string quoted(std::string_view text)
{
    constexpr size_t most = 40; // bytes
    const std::string_view start = Core::Utf8::cut(text, most);
    return '"' + std::string(start) + (start.size() < text.size() ? "...\"" : "\"");
}
}
