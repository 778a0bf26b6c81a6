// SPDX-License-Identifier: GPL-3.0-or-later
// A host in one object: plays an effect block by block over the adapters' road, and keeps what came out of
// it.
#pragma once

#include "Orbel/contract/BlockRoad.h"
#include "effect/instance/CQDT_DKS_Single.h"

#include <memory>
#include <vector>

struct Player final : private Orbel::BlockObserver
{
    static constexpr Orbel::BlockRules rules = {Orbel::BlockRules::wholeBelowTwiceDesired,
                                                Orbel::BlockRules::cutTheBlock, Orbel::BlockRules::quotient};
    CQDT_DKS_Single effect;
    float rate;
    double tempo = 120.0;
    double ppq = 0.0;
    bool playing = true;
    long position = 0; // samples since the start
    std::vector<float> left, right, gain;

    explicit Player(float sampleRate = 44100.0f, long largestBlock = 8192,
                    Orbel::OrbelCallback* callback = nullptr)
        : effect(callback), rate(sampleRate)
    {
        effect.setSampleRate(rate);
        effect.setBlockSize(largestBlock);
        effect.reset();
    }

    void set(const char* id, float value) { effect.getParameterProperty(id)->setValue(value); }
    float get(const char* id) { return effect.getParameterProperty(id)->getCurrentValue(); }

    // A ramp that never repeats, so that a sample tells where it came from; the right channel is negative.
    static float input(long at) { return float(at + 1) * 0x1p-20f; }

    void play(int frames)
    {
        std::vector<float> inLeft, inRight, outLeft(size_t(frames), 0.0f), outRight(outLeft);
        for (long i = position; i < position + frames; ++i)
        {
            inLeft.push_back(input(i));
            inRight.push_back(-input(i));
        }
        float* in[] = {inLeft.data(), inRight.data()};
        float* out[] = {outLeft.data(), outRight.data()};
        Orbel::AudioBusInformation info(in, 1, out, 1, frames);
        info.timeInfo.tempo = float(tempo);
        info.timeInfo.playing = playing;
        info.timeInfo.ppqPosition = ppq;
        Orbel::BlockRoad(effect, rules, this).process(info, rate);

        left.insert(left.end(), outLeft.begin(), outLeft.end());
        right.insert(right.end(), outRight.begin(), outRight.end());
        position += frames;
        if (playing)
            ppq += frames / (60.0 / tempo * rate);
    }

    void pieceProcessed(int frames) override
    {
        gain.insert(gain.end(), effect.getGainRecord(), effect.getGainRecord() + frames);
    }

    void play(long frames, int block)
    {
        for (; frames > 0; frames -= block)
            play(int(std::min<long>(frames, block)));
    }

    // The samples at which the gain begins to fall from 1: the starts of the pre-fades.
    std::vector<long> triggers() const
    {
        std::vector<long> found;
        for (size_t i = 1; i < gain.size(); ++i)
            if (gain[i - 1] == -1.0f && gain[i] > -1.0f)
                found.push_back(long(i));
        return found;
    }
};
