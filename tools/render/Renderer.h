// SPDX-License-Identifier: GPL-3.0-or-later
// The loop of a render: cuts the input into blocks, as a host would, and takes each through the engine.
//
// Blocks have the given sizes in turn. An event for the transport or the time base ends its block early,
// and the block that it begins takes the next size. A set is handed to the engine with the block into
// which it falls and cuts nothing here.
#pragma once

#include "tools/render/EventsFile.h"
#include "tools/render/RenderEngine.h"

#include <functional>
#include <vector>

namespace lodex
{
class Renderer
{
public:
    // Fills left and right with up to so many samples and returns how many; fewer than asked for end the
    // input.
    using Source = std::function<int(float* left, float* right, int frames)>;
    // Takes a block that has been processed; the block is valid until the next one.
    using Sink = std::function<void(const RenderBlock&)>;

    // prepared outlives the renderer. hertz is the sample rate; sizes holds at least one, each at least
    // 1; events are sorted by sample.
    Renderer(RenderEngine& prepared, int hertz, Transport start, std::vector<int> sizes,
             const std::vector<Event>& events);

    void run(const Source& source, const Sink& sink);

private:
    void applyControls();
    int nextBlockLength();
    void queueSets();

    RenderEngine& engine;
    int rate;
    std::vector<int> blockSizes;
    size_t nextSize = 0;
    std::vector<Event> controls; // what ends a block
    std::vector<Event> sets;     // what falls into one
    size_t nextControl = 0;
    size_t nextSet = 0;
    Transport transport;
    std::vector<float> buffers; // five channels of the largest block
    RenderBlock block;
};
}
