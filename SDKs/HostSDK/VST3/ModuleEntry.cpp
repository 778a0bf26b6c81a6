// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSDK/VST3/ModuleEntry.h"

namespace Steinberg
{
static void* moduleHandle = nullptr;
static int entries = 0;

bool enterModule(void* platformHandle)
{
    if (!platformHandle)
        return false;
    if (++entries == 1)
        moduleHandle = platformHandle;
    return true;
}

bool leaveModule()
{
    if (entries == 0)
        return false;
    if (--entries == 0)
        moduleHandle = nullptr;
    return true;
}

void* getModuleHandle()
{
    return moduleHandle;
}
}
