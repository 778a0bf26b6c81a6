// A built VST 3 bundle, loaded as a host loads it: its object by dlopen, its entry, its factory, and in the
// opposite order at the end.
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
    // path is the bundle's folder. A ToolError tells why it can't be loaded.
    explicit VST3Module(const std::string& path);
    ~VST3Module();
    VST3Module(const VST3Module&) = delete;
    VST3Module& operator=(const VST3Module&) = delete;

    Steinberg::IPluginFactory& factory() const { return *classes; }
    // A new object of the first audio effect's class, before its initialize. A ToolError if there is none.
    Steinberg::IPtr<Steinberg::Vst::IComponent> createEffect() const;

private:
    void* object = nullptr;
    Steinberg::IPluginFactory* classes = nullptr;
};

// Where the bundle of this build or installation is: LODEX_VST3 in the environment, else beside the command,
// else among the user's plug-ins. A ToolError lists where it was looked for.
std::string findVST3Bundle();
}
