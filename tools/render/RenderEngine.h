// SPDX-License-Identifier: GPL-3.0-or-later
// What turns blocks of audio into ducked ones: the effect in this process, or a built plug-in behind one
// of its host formats. The renderer drives it as a host does: everything before the first block once,
// then, for each block, the sets that fall into it and the block itself.
#pragma once

#include "tools/preset/PresetFile.h"
#include "tools/render/Transport.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lodex
{
struct ParameterInfo
{
    std::string id; // the id text, as "ATTACKTIME"
    float minimum;  // in the parameter's own unit, as all values here
    float maximum;
    long automationIndex; // by which hosts automate it; -1 if they cannot
};

// A value for the parameter at an index of RenderEngine::parameters().
struct ParameterValue
{
    int parameter;
    float value;
};

// One block on its way through the engine. The buffers belong to the renderer and hold frames samples.
struct RenderBlock
{
    int64_t first = 0; // frame of the file
    int frames = 0;
    Transport transport;         // at the block's first frame
    float* input[2] = {};        // left, right
    float* output[2] = {};       // filled by the engine
    float* gainRecord = nullptr; // filled by an engine that records it: see gainFromRecord
};

// The record goes from -1, not ducked or bypassed, to 1, ducked to silence.
inline float gainFromRecord(float record)
{
    return (1.0f - record) * 0.5f;
}

class RenderEngine
{
public:
    virtual ~RenderEngine() = default;

    virtual const std::vector<ParameterInfo>& parameters() const = 0;
    // Whether process fills the gain record.
    virtual bool recordsGain() const { return true; }

    // Rate in hertz; no block will be longer than largestBlock frames.
    virtual void prepare(int rate, int largestBlock) = 0;
    // The trigger interval in beats, set between blocks. An engine that cannot change it once it runs throws
    // a ToolError, and so does queueSet for a parameter that it cannot automate.
    virtual void setTimeBase(float beats) = 0;
    virtual void set(ParameterValue value) = 0;
    // Loads a chunk, which sets the time base, too. Between blocks.
    virtual void loadPreset(const std::string& chunk, PresetType taken) = 0;
    virtual void reset() = 0;

    // A set that is due offset frames into the block that process gets next. Of several for one
    // parameter in one block, the last counts, as in a host.
    virtual void queueSet(ParameterValue value, int offset) = 0;
    virtual void process(RenderBlock& block) = 0;
};

// A new engine by its name on the command line. Throws a ToolError that lists the names if there is none of
// that name.
std::unique_ptr<RenderEngine> createRenderEngine(std::string_view name);

// The parameter and the value that the two texts name. Throws a ToolError if there is no such parameter, or
// if the value is no number of its range.
ParameterValue resolveSet(const std::vector<ParameterInfo>& parameters, std::string_view id,
                          std::string_view value);
}
