// SPDX-License-Identifier: GPL-3.0-or-later
// The bundle's classes as a VST 3 host finds them: one for each entry of the plug-in list.
#pragma once

namespace Steinberg
{
class IPluginFactory;
}

namespace Orbel
{
// The one factory of the process, with a reference for the caller. It is made when it is first asked for, and
// made anew when it is asked for after its last reference is gone. [window thread]
Steinberg::IPluginFactory* getVST3Factory();
}
