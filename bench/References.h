// SPDX-License-Identifier: GPL-3.0-or-later
// What the effect is measured against, in the same run: the least that any such effect has to do.
#pragma once

#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace bench
{
constexpr float pi = 3.14159265f;

// The block, copied.
inline void copyBlock(const float* const* in, float* const* out, int frames)
{
    for (int channel = 0; channel < 2; ++channel)
        std::memcpy(out[channel], in[channel], sizeof(float) * size_t(frames));
}

// A stereo delay of 130 samples with a gain that follows a raised cosine, beat by beat.
class DelayWithGain
{
public:
    void process(const float* const* in, float* const* out, int frames)
    {
        for (int i = 0; i < frames; ++i)
        {
            const float gain = 0.5f - 0.5f * std::cos(phase * 2.0f * pi);
            phase += 1.0f / 22050.0f;
            if (phase >= 1.0f)
                phase -= 1.0f;
            for (size_t channel = 0; channel < 2; ++channel)
            {
                const float delayed = line[channel][place];
                line[channel][place] = in[channel][i];
                out[channel][i] = delayed * gain;
            }
            place = place + 1 == length ? 0 : place + 1;
        }
    }

private:
    static constexpr size_t length = 130;
    std::array<std::array<float, length>, 2> line{};
    size_t place = 0;
    float phase = 0.0f;
};

// The slow average of a gain, each step of which needs the last one, and nothing else.
inline float gainMeterChain(float meter, const float* gain, int frames)
{
    for (int i = 0; i < frames; ++i)
        meter = float(double(meter) + (double(gain[i]) - double(meter)) * 0.01);
    return meter;
}
}
