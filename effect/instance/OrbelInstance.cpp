// SPDX-License-Identifier: GPL-3.0-or-later
// What this bundle holds: one effect.
#include "Orbel/contract/OrbelFactory.h"
#include "Orbel/storage/CFileFormat.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "presets/StateLayout.h"

static constexpr Orbel::OrbelFX_Description lodex = {
    .id = {'Z', 'R', 'T', 'Q'},
    .name = "QDT Lodex",
    .product = "Torvane Workbench",
    .vendor = "Torvane",
    .numStereoInputs = 1,
    .numStereoOutputs = 1,
    .numPrograms = 32,
    .versionString = "3.0.4",
    .type = Orbel::OrbelFX_Description::effect,
    .sidechainFlag = true,
    .version = 0x30004,
    .midiChannels = 1,
};

void getOrbelPluginList(Orbel::OrbelPluginList& list)
{
    list = Orbel::OrbelPluginList();
    list.push_back(lodex);
}

Orbel::OrbelPluginList* getOrbelPluginListPTR()
{
    static Orbel::OrbelPluginList gList = []
    {
        Orbel::OrbelPluginList list;
        getOrbelPluginList(list);
        return list;
    }();
    return &gList;
}

Orbel::OrbelOS* createOrbelInstance(Orbel::OrbelCallback* callback, unsigned long)
{
    Orbel::kPresetFormatFXP->setPluginID(StateLayout::pluginID);
    Orbel::kPresetFormatFXB->setPluginID(StateLayout::pluginID);
    return new CQDT_DKS_Single(callback);
}
