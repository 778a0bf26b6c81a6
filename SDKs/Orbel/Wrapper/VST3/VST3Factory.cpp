// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/Wrapper/VST3/VST3Factory.h"

#include "CORE/ForeignData.h"
#include "HostSDK/VST3/CPluginFactory.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"

#include <cstring>

namespace Orbel
{
using namespace Steinberg;

namespace
{
// Twelve letters, and the plug-in id, its highest byte first.
void writeClassID(const OrbelFX_Description& description, TUID id)
{
    constexpr char family[] = "SnvxTRVNWRPR";
    constexpr size_t length = sizeof family - 1;
    std::memcpy(id, family, length);
    Core::writeBig32(id + length, std::uint32_t(description.idAsWord()));
}

PClassInfo2 classOf(const OrbelFX_Description& description)
{
    const bool plays = description.type == OrbelFX_Description::instrument;
    TUID id;
    writeClassID(description, id);
    return {id,         PClassInfo::kManyInstances,          kVstAudioEffectClass, description.name,
            0,          plays ? "Instrument" : "Fx|Torvane", description.vendor,   description.versionString,
            "VST 3.1.0"};
}

FUnknown* createEffect(void* description)
{
    auto* const adapter = new Orbel_VST3(*static_cast<OrbelFX_Description*>(description));
    return static_cast<Vst::IAudioProcessor*>(adapter);
}

class Factory : public CPluginFactory
{
public:
    Factory()
        : CPluginFactory({"Ostrel Audio / Torvane", "https://www.torvane.example",
                          "mailto:support@torvane.example", PFactoryInfo::kUnicode})
    {
        OrbelPluginList& list = *getOrbelPluginListPTR();
        for (int i = 0; i < list.getCount(); ++i)
            registerClass(classOf(list[i]), createEffect, &list[i]);
    }
    ~Factory() override;
};

Factory* factory = nullptr;

Factory::~Factory()
{
    factory = nullptr;
}
}

IPluginFactory* getVST3Factory()
{
    if (factory)
        factory->addRef();
    else
        factory = new Factory;
    return factory;
}
}
