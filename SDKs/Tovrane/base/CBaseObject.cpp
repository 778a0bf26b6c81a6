// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/CBaseObject.h"

namespace Tovra
{
long CBaseObject::notify(CBaseObject*, const char*)
{
    return 0;
}

void CBaseObject::remember()
{
    references.fetch_add(1, std::memory_order_relaxed);
}

void CBaseObject::forget()
{
    // What other holders wrote before they dropped theirs must be seen by the destructor.
    if (references.fetch_sub(1, std::memory_order_acq_rel) <= 1)
        delete this;
}
}
