// SPDX-License-Identifier: GPL-3.0-or-later
// What a VST 3 host looks up in the bundle's object.
#include "HostSDK/VST3/ModuleEntry.h"
#include "Orbel/Wrapper/VST3/VST3Factory.h"
#include "editor/wireUp.h"
#include "pluginterfaces/base/ipluginbase.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED Steinberg::IPluginFactory* GetPluginFactory()
{
    wireUp();
    return Orbel::getVST3Factory();
}

#if defined(__APPLE__)
#include <CoreFoundation/CoreFoundation.h>

EXPORTED bool bundleEntry(CFBundleRef bundle)
{
    return bundle && Steinberg::enterModule(const_cast<void*>(CFRetain(bundle)));
}

EXPORTED bool bundleExit()
{
    const CFTypeRef bundle = Steinberg::getModuleHandle();
    if (!Steinberg::leaveModule())
        return false;
    CFRelease(bundle);
    return true;
}
#else
EXPORTED bool ModuleEntry(void* sharedObject)
{
    return Steinberg::enterModule(sharedObject);
}

EXPORTED bool ModuleExit()
{
    return Steinberg::leaveModule();
}
#endif
