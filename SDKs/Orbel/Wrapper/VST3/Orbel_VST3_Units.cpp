// SPDX-License-Identifier: GPL-3.0-or-later
// The adapter's lists: its unit, its programs, its MIDI controllers.
#include "HostSDK/VST3/Text.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"

#include <cstring>

namespace Orbel
{
using namespace Steinberg;
using namespace Steinberg::Vst;

tresult PLUGIN_API Orbel_VST3::getUnitInfo(int32 index, UnitInfo& info)
{
    if (index < 0 || size_t(index) >= units.size())
        return kResultFalse;
    info = units[size_t(index)];
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::selectUnit(UnitID unit)
{
    selectedUnit = unit;
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::getProgramListInfo(int32 index, ProgramListInfo& info)
{
    if (index != 0 || !hasPrograms())
        return kResultFalse;
    info.id = kProgramList;
    copyText("Presets", info.name);
    info.programCount = description.numPrograms;
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::getProgramName(ProgramListID list, int32 index, String128 name)
{
    const bool there = list == kProgramList && effect && index >= 0 && index < description.numPrograms;
    char text[kParameterTextSize] = "";
    if (!there || !effect->getProgramNameIndexed(index, text))
        return kResultFalse;
    copyText(text, name);
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::getProgramInfo(ProgramListID, int32, FIDString attribute, String128 value)
{
    if (!attribute || std::strcmp(attribute, "MusicalInstrument") != 0)
        return kResultFalse;
    copyText("Musical FX|Other", value);
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::getMidiControllerAssignment(int32 bus, int16 channel, CtrlNumber controller,
                                                           ParamID& id)
{
    if (bus != 0 || !takesMidi() || controller < 0 || controller >= controllersPerChannel)
        return kResultFalse;
    if (channel >= 0 && channel < midiChannels)
        id = firstController + ParamID(channel * controllersPerChannel + controller);
    return kResultOk;
}
}
