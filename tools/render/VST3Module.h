// SPDX-License-Identifier: GPL-3.0-or-later
// A built VST 3 bundle, loaded as a host loads it: its shared object by dlopen, then its entry, then its
// factory; and unloaded in the opposite order.
//
// Everything that was made from it must be released first. [window thread]
#pragma once

#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/vst/ivstcomponent.h"

#include <string>

namespace lodex
{
class VST3Module
{
public:
    // path is the bundle's folder. Throws a ToolError that says why it cannot be loaded.
    explicit VST3Module(const std::string& path);
    ~VST3Module();
    VST3Module(const VST3Module&) = delete;
    VST3Module& operator=(const VST3Module&) = delete;

    Steinberg::IPluginFactory& factory() const { return *classes; }
    // A new object of the first class of audio effects, not initialised yet. Throws a ToolError if there is
    // no such class.
    Steinberg::IPtr<Steinberg::Vst::IComponent> createEffect() const;

private:
    void* object = nullptr;
    Steinberg::IPluginFactory* classes = nullptr;
};

// The folder of the bundle: LODEX_VST3 of the environment, else that of this build or installation, else that
// among the user's plug-ins. Throws a ToolError that lists where it was looked for.
std::string findVST3Bundle();
}
