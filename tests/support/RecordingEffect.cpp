// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/RecordingEffect.h"

Orbel::OrbelFX_Description RecordingEffect::description()
{
    Orbel::OrbelFX_Description description{
        {'T', 'E', 'S', 'T'}, "Test", "Test", "Us", 1, 1, 4, "1.0", 0, true, 1, 1};
    description.type = plan.type;
    return description;
}

Orbel::OrbelOS* createOrbelInstance(Orbel::OrbelCallback* callback, unsigned long)
{
    return RecordingEffect::plan.makes ? new RecordingEffect(callback) : nullptr;
}

void getOrbelPluginList(Orbel::OrbelPluginList& list)
{
    list.push_back(RecordingEffect::description());
}

Orbel::OrbelPluginList* getOrbelPluginListPTR()
{
    static Orbel::OrbelPluginList list;
    list = {};
    getOrbelPluginList(list);
    return &list;
}
