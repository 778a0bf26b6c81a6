// SPDX-License-Identifier: GPL-3.0-or-later
// What a host calls when it has loaded the bundle's object and before it unloads it. bundle/ exports these
// under the names that the platform wants.
//
// A host may enter several times and then leaves as often. [window thread]
#pragma once

namespace Steinberg
{
// The platform's handle of the loaded object, kept until the last leave. Null is refused.
bool enterModule(void* platformHandle);
// False if no entry is open.
bool leaveModule();
// Null while no host has entered.
void* getModuleHandle();
}
