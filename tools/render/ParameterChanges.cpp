// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/ParameterChanges.h"

namespace lodex
{
using namespace Steinberg;
using namespace Steinberg::Vst;

void ParameterQueue::start(ParamID parameter)
{
    id = parameter;
    points.clear();
}

tresult PLUGIN_API ParameterQueue::getPoint(int32 index, int32& sampleOffset, ParamValue& value)
{
    if (index < 0 || index >= getPointCount())
        return kInvalidArgument;
    sampleOffset = points[size_t(index)].sampleOffset;
    value = points[size_t(index)].value;
    return kResultOk;
}

tresult PLUGIN_API ParameterQueue::addPoint(int32 sampleOffset, ParamValue value, int32& index)
{
    index = getPointCount();
    points.push_back({sampleOffset, value});
    return kResultOk;
}

void ParameterChanges::add(ParamID id, int32 sampleOffset, double value)
{
    int32 ignored = 0;
    addParameterData(id, ignored)->addPoint(sampleOffset, value, ignored);
}

IParamValueQueue* PLUGIN_API ParameterChanges::getParameterData(int32 index)
{
    return index >= 0 && index < getParameterCount() ? &queues[size_t(index)] : nullptr;
}

IParamValueQueue* PLUGIN_API ParameterChanges::addParameterData(const ParamID& id, int32& index)
{
    for (index = 0; index < getParameterCount(); ++index)
        if (queues[size_t(index)].getParameterId() == id)
            return &queues[size_t(index)];
    if (used == queues.size())
        queues.emplace_back();
    queues[used].start(id);
    return &queues[used++];
}
}
