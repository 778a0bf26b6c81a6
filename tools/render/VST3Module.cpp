// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/VST3Module.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <vector>

namespace lodex
{
using namespace Steinberg;
namespace fs = std::filesystem;

namespace
{
constexpr const char* bundleName = "Lodex.vst3";

std::string objectOf(const fs::path& bundle)
{
    return bundle / "Contents" / LODEX_VST3_ARCHITECTURE / bundle.stem().concat(".so");
}

template <typename Function>
Function* entry(void* object, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(object, name));
}
}

VST3Module::VST3Module(const std::string& path)
    : object(dlopen(objectOf(path).c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (!object)
        throw ToolError("cannot load " + printable(path) + ": " + printable(dlerror()));
    const auto enter = entry<bool(void*)>(object, "ModuleEntry");
    const auto getFactory = entry<IPluginFactory*()>(object, "GetPluginFactory");
    if (enter && enter(object) && getFactory)
        classes = getFactory();
    if (!classes)
    {
        dlclose(object);
        throw ToolError(printable(path) + " is no VST 3 plug-in");
    }
}

VST3Module::~VST3Module()
{
    classes->release();
    if (const auto leave = entry<bool()>(object, "ModuleExit"))
        leave();
    dlclose(object);
}

IPtr<Vst::IComponent> VST3Module::createEffect() const
{
    for (int32 i = 0; i < classes->countClasses(); ++i)
    {
        PClassInfo info;
        void* made = nullptr;
        if (classes->getClassInfo(i, &info) == kResultOk &&
            !std::strcmp(info.category, kVstAudioEffectClass) &&
            classes->createInstance(info.cid, Vst::IComponent::iid, &made) == kResultOk)
            return owned(static_cast<Vst::IComponent*>(made));
    }
    throw ToolError("the bundle makes no audio effect");
}

static std::vector<fs::path> placesOfBundle()
{
    std::error_code ignored;
    const fs::path beside = fs::read_symlink("/proc/self/exe", ignored).parent_path().parent_path();
    std::vector<fs::path> places = {beside / "bundle", beside / "lib" / "vst3"};
    if (const char* const home = std::getenv("HOME"))
        places.push_back(fs::path(home) / ".vst3");
    for (fs::path& place : places)
        place /= bundleName;
    return places;
}

std::string findVST3Bundle()
{
    if (const char* const chosen = std::getenv("LODEX_VST3"))
        return chosen;
    std::string tried;
    for (const fs::path& place : placesOfBundle())
    {
        std::error_code ignored;
        if (fs::is_directory(place, ignored))
            return place;
        tried += (tried.empty() ? "" : ", ") + printable(place.string());
    }
    throw ToolError("there is no built VST 3 bundle at " + tried + "; LODEX_VST3 may name one");
}
}
