// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/Renderer.h"

#include <algorithm>

namespace lodex
{
Renderer::Renderer(RenderEngine& prepared, int hertz, Transport start, std::vector<int> sizes,
                   const std::vector<Event>& events)
    : engine(prepared), rate(hertz), blockSizes(std::move(sizes)), transport(start)
{
    for (const Event& event : events)
        (event.kind == Event::Kind::set ? sets : controls).push_back(event);

    const size_t largest = size_t(*std::max_element(blockSizes.begin(), blockSizes.end()));
    buffers.resize(5 * largest);
    float* const channels = buffers.data();
    for (size_t i = 0; i < 2; ++i)
    {
        block.input[i] = channels + i * largest;
        block.output[i] = channels + (2 + i) * largest;
    }
    block.gainRecord = channels + 4 * largest;
}

void Renderer::run(const Source& source, const Sink& sink)
{
    for (;;)
    {
        applyControls();
        const int wanted = nextBlockLength();
        block.frames = source(block.input[0], block.input[1], wanted);
        if (block.frames == 0)
            return;
        block.transport = transport;
        queueSets();
        engine.process(block);
        sink(block);
        if (block.frames < wanted)
            return;
        transport.advance(block.frames, rate);
        block.first += block.frames;
    }
}

// The events at the first frame of the coming block; there are none before it.
void Renderer::applyControls()
{
    for (; nextControl < controls.size() && controls[nextControl].sample == block.first; ++nextControl)
    {
        const Event& event = controls[nextControl];
        switch (event.kind)
        {
        case Event::Kind::set:
            break;
        case Event::Kind::tempo:
            transport.tempo = event.value;
            break;
        case Event::Kind::play:
            transport.playing = event.value != 0.0;
            break;
        case Event::Kind::ppq:
            transport.ppq = event.value;
            break;
        case Event::Kind::timeBase:
            engine.setTimeBase(float(event.value));
            break;
        }
    }
}

int Renderer::nextBlockLength()
{
    const int size = blockSizes[nextSize];
    nextSize = (nextSize + 1) % blockSizes.size();
    if (nextControl == controls.size())
        return size;
    return int(std::min<int64_t>(size, controls[nextControl].sample - block.first));
}

void Renderer::queueSets()
{
    for (; nextSet < sets.size() && sets[nextSet].sample < block.first + block.frames; ++nextSet)
    {
        const Event& event = sets[nextSet];
        engine.queueSet({event.parameter, float(event.value)}, int(event.sample - block.first));
    }
}
}
