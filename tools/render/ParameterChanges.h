// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter changes of one block, as a VST 3 host hands them over. It is cleared and filled again, and
// keeps its memory. [audio thread]
#pragma once

#include "pluginterfaces/base/funknown.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <vector>

namespace lodex
{
// Objects of the host that a plug-in only borrows: they are not counted.
template <typename Interface>
class Borrowed : public Interface
{
public:
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID, void** object) override
    {
        *object = nullptr;
        return Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }
};

class ParameterQueue final : public Borrowed<Steinberg::Vst::IParamValueQueue>
{
public:
    void start(Steinberg::Vst::ParamID parameter);

    Steinberg::Vst::ParamID PLUGIN_API getParameterId() override { return id; }
    Steinberg::int32 PLUGIN_API getPointCount() override { return Steinberg::int32(points.size()); }
    Steinberg::tresult PLUGIN_API getPoint(Steinberg::int32 index, Steinberg::int32& sampleOffset,
                                           Steinberg::Vst::ParamValue& value) override;
    Steinberg::tresult PLUGIN_API addPoint(Steinberg::int32 sampleOffset, Steinberg::Vst::ParamValue value,
                                           Steinberg::int32& index) override;

private:
    struct Point
    {
        Steinberg::int32 sampleOffset;
        Steinberg::Vst::ParamValue value;
    };

    Steinberg::Vst::ParamID id = 0;
    std::vector<Point> points;
};

class ParameterChanges final : public Borrowed<Steinberg::Vst::IParameterChanges>
{
public:
    // Values are normalised.
    void add(Steinberg::Vst::ParamID id, Steinberg::int32 sampleOffset, double value);
    void clear() { used = 0; }

    Steinberg::int32 PLUGIN_API getParameterCount() override { return Steinberg::int32(used); }
    Steinberg::Vst::IParamValueQueue* PLUGIN_API getParameterData(Steinberg::int32 index) override;
    Steinberg::Vst::IParamValueQueue* PLUGIN_API addParameterData(const Steinberg::Vst::ParamID& id,
                                                                  Steinberg::int32& index) override;

private:
    std::vector<ParameterQueue> queues;
    size_t used = 0; // of them
};
}
