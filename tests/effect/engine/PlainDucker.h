// SPDX-License-Identifier: GPL-3.0-or-later
// The ducker once more, one sample at a time and without any shortcut: what the real one must equal to
// the last bit. Subnormal numbers go through the processor's own arithmetic here. The envelope is the real
// one, one sample at a time; CAHRModule2_test.cpp looks after it.
#pragma once

#include "effect/engine/CAHRModule2.h"

namespace plain
{
struct Ducker
{
    float current[7] = {}, target[7] = {0, 1, 0, 0, 1, 1, 1};
    long since = 22, toStart = -1, toTrigger = -1, fadeLength = 0, fadeLeft = 150;
    float velocity = 1, pending = 1, depth = 0, gain = 0, tempo = 10;
    float fadeStep = 1.0f / 150.0f, fadeValue = 1;
    bool fading = false, initialised = false;
    float meter = 0;
    CAHRModule2 envelope;

    Ducker()
    {
        envelope.setParameter(4, 1);
        envelope.setParameter(8, 0);
        envelope.setParameter(1, 0);
        envelope.setParameter(9, 4);
        envelope.setTempo(10);
        setSampleRate(44100.0f);
    }

    void setSampleRate(float rate) { envelope.setSampleRate(rate); }

    void setTempo(float bpm)
    {
        tempo = bpm;
        envelope.setTempo(bpm);
        since = 22;
    }

    void setTimeAdjust(float beats) { envelope.setBeatMultiplier(beats); }
    void setTimeOffset(float v) { envelope.setParameter(0, 1.0f - v); }

    void setTriggers(long samples)
    {
        toTrigger = samples;
        toStart = samples + fadeLength;
    }

    void passOn(int i)
    {
        static constexpr int map[] = {2, 3, 5, 6, 7};
        if (i < 5)
            envelope.setParameter(map[i], current[i]);
        else if (i == 5)
            depth = velocity * current[5];
        else
            gain = current[6];
    }

    void reset()
    {
        initialised = fading = false;
        envelope.reset();
        toStart = toTrigger = -1;
        meter = 0;
        envelope.setTempo(tempo);
        for (int i = 0; i < 7; ++i)
        {
            current[i] = target[i];
            if (i >= 1 && i <= 4)
                passOn(i);
        }
    }

    void pass()
    {
        for (int i = 0; i < 7; ++i)
        {
            if (current[i] == target[i] && initialised)
                continue;
            if (current[i] != target[i])
            {
                const double d = double(target[i] - current[i]);
                if (d > 0.002 || d < -0.002 || (d <= 0.001 && d >= -0.001))
                    current[i] = target[i];
                else
                    current[i] = float(double(current[i]) + 1e-19 + 0.1 * d);
            }
            passOn(i);
        }
    }

    float weight()
    {
        if (!fading)
            return 1.0f;
        fadeValue = fadeLeft < 0 ? 0.0f : fadeValue - fadeStep;
        --fadeLeft;
        const float y = float(double(fadeValue) * 3.141592653589793);
        const float q = y * y;
        const float c =
            ((((-2.605e-7f * q + 2.47609e-5f) * q - 0.0013888397f) * q + 0.04166664f) * q - 0.5f) * q + 1.0f;
        const float w = 0.5f - 0.5f * c;
        return w > 1.0f ? 1.0f : (w < 0.0f ? 0.0f : w);
    }

    void process(float* left, float* right, float* record, long frames)
    {
        depth = current[5] * velocity;
        gain = current[6];
        if (!initialised)
            since = 50000;
        for (long i = 0; i < frames; ++i)
        {
            if (++since > 22)
            {
                pass();
                since = 0;
                initialised = true;
            }
            if (toStart == 0)
            {
                fading = false;
                envelope.start();
            }
            const float env = envelope.process();
            if (toTrigger == 0)
            {
                fadeStep = 1.0f / float(fadeLength);
                fadeLeft = fadeLength;
                fadeValue = 1;
                fading = true;
                velocity = pending;
                depth = current[5] * velocity;
            }
            const float w = weight();
            const float first = envelope.getFirstValue();
            --toTrigger;
            const float g =
                ((1.0f - depth) + ((1.0f - env) * w + (1.0f - w) * (1.0f - first)) * depth) * gain;
            left[i] *= g;
            right[i] *= g;
            record[i] = 1.0f - g - g;
            meter = float(double(meter) + (double(g) - double(meter)) * 0.01);
            --toStart;
        }
    }
};
}
