// SPDX-License-Identifier: GPL-3.0-or-later
// What the effect asks of its host. [window thread], apart from the latency.
#include "Orbel/Wrapper/VST3/OrbelVST3Parameter.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"

namespace Orbel
{
using namespace Steinberg;
using namespace Steinberg::Vst;

bool Orbel_VST3::restart(int32 flags)
{
    return componentHandler && componentHandler->restartComponent(flags) == kResultOk;
}

bool Orbel_VST3::CB_updateHostDisplay()
{
    const FUnknownPtr<IUnitHandler> unitHandler(componentHandler);
    if (!unitHandler)
        return false;
    unitHandler->notifyUnitSelection(kRootUnitId);
    unitHandler->notifyProgramListChange(kProgramList, kAllProgramInvalid);
    return true;
}

bool Orbel_VST3::CB_ioChanged()
{
    return restart(kIoChanged | kLatencyChanged | kParamTitlesChanged);
}

bool Orbel_VST3::CB_setOutputLatency(int samples)
{
    latencySamples = samples;
    return true;
}

// Gestures. An index that is no parameter's reaches no host.

bool Orbel_VST3::CB_beginEdit(int index)
{
    OrbelVST3Parameter* const parameter = findParameter(ParamID(index));
    if (!parameter)
        return false;
    parameter->editing = true;
    return beginEdit(ParamID(index)) == kResultOk;
}

bool Orbel_VST3::CB_endEdit(int index)
{
    OrbelVST3Parameter* const parameter = findParameter(ParamID(index));
    if (!parameter)
        return false;
    parameter->editing = false;
    return endEdit(ParamID(index)) == kResultOk;
}

void Orbel_VST3::CB_performEdit(int index, float position)
{
    if (findParameter(ParamID(index)))
        performEdit(ParamID(index), position);
}

void Orbel_VST3::CB_stateChanged()
{
    setDirty(true);
}

void Orbel_VST3::CB_parameterInfoChanged(const char*)
{
    restart(kParamValuesChanged | kParamTitlesChanged);
}
}
