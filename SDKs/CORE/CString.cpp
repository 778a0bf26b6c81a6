// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/CString.h"

#include <cstring>

namespace Core
{
void CString::set(const char* text)
{
    if (capacity < 1)
        return;
    std::strncpy(buffer, text ? text : "", size_t(capacity) - 1);
    buffer[capacity - 1] = 0;
}

int CString::compare(const char* text) const
{
    return capacity < 1 ? 0 : std::strncmp(buffer, text ? text : "", size_t(capacity) - 1);
}

void CString::copyTo(char* out) const
{
    if (capacity < 1)
        return;
    std::strncpy(out, buffer, size_t(capacity));
    out[capacity - 1] = 0;
}
}
