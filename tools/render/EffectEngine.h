// SPDX-License-Identifier: GPL-3.0-or-later
// The effect itself as an engine, in this process and without a host format in between. It does what an
// adapter does: hands over the transport, adds the timed values, and takes each block over the same road.
#pragma once

#include "tools/render/RenderEngine.h"

class CQDT_DKS_Single;

namespace Orbel
{
class OrbelOS;
class ParameterProperty;
}

namespace lodex
{
class EffectEngine : public RenderEngine
{
public:
    EffectEngine();
    ~EffectEngine() override;

    const std::vector<ParameterInfo>& parameters() const override { return infos; }
    void prepare(int rate, int largestBlock) override;
    void setTimeBase(float beats) override;
    void set(ParameterValue value) override;
    void loadPreset(const std::string& chunk, PresetType taken) override;
    void reset() override;
    void queueSet(ParameterValue value, int offset) override;
    void process(RenderBlock& block) override;

    // The effect's state, as a host's project keeps it.
    std::string state();
    // The value between 0 and 1, as hosts see it.
    float normalize(ParameterValue value) const;

private:
    std::unique_ptr<Orbel::OrbelOS> effect;
    CQDT_DKS_Single& product; // the same effect, with what it has beyond the contract
    std::vector<ParameterInfo> infos;
    std::vector<Orbel::ParameterProperty*> properties; // of the effect, in the order of infos
    int sampleRate = 44100;
};
}
