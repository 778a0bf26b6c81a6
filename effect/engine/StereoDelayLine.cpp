// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/StereoDelayLine.h"

#include "DSP/VectorPrimitives.h"

#include <algorithm>
#include <utility>

constexpr int margin = 2;          // samples of the line beyond its delay
constexpr long longestPiece = 256; // samples; a longer block goes through in several

void StereoDelayLine::reserve(long longestDelay, long largestBlock)
{
    if (longestDelay + margin > line.length)
    {
        Orbel::AudioStereoBus former;
        former.createBusWithOwnBuffer(line.length);
        former.copyFrom(&line, line.length);
        line.createBusWithOwnBuffer(longestDelay + margin);
        line.copyFrom(&former, former.length);
    }
    const long piece = std::min(largestBlock, longestPiece);
    if (piece > long(scratch.numSamples))
        scratch.alloc(size_t(piece), 1);
}

void StereoDelayLine::announceLength(int samples)
{
    int known = extent;
    while (samples + margin > known)
        if (extent.compare_exchange_weak(known, samples + margin))
        {
            silencePending = true;
            return;
        }
}

void StereoDelayLine::clear()
{
    line.clear(0);
    silencePending = false;
}

void StereoDelayLine::process(Orbel::AudioStereoBus& bus, long frames)
{
    if (silencePending)
        clear();
    const long delay = std::min<long>(length, line.length);
    const long most = long(scratch.numSamples);
    if (delay <= 0 || most == 0)
        return;
    for (auto [channel, delayed] : {std::pair(bus.left, line.left), std::pair(bus.right, line.right)})
        for (long done = 0; done < frames; done += most)
            processPiece(channel + done, delayed, delay, std::min(most, frames - done));
}

void StereoDelayLine::processPiece(float* channel, float* delayed, long delay, long frames)
{
    const int n = int(frames), d = int(delay);
    float* input = scratch.channels[0];
    ippsCopy_32f(channel, input, n);
    if (n < d)
    {
        ippsCopy_32f(delayed, channel, n);
        ippsMove_32f(delayed + n, delayed, d - n);
        ippsCopy_32f(input, delayed + (d - n), n);
    }
    else
    {
        ippsCopy_32f(delayed, channel, d);
        ippsCopy_32f(input, channel + d, n - d);
        ippsCopy_32f(input + (n - d), delayed, d);
    }
}
