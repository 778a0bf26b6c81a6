// The ducker once more, one sample at a time and without any shortcut: what the real one must equal to
// the last bit. Denormal numbers go through the processor's own arithmetic here.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace plain
{
struct Segment
{
    float start = 0, delta = 0, increment = 0, curve = 0;
};

inline float levelAt(const Segment& s, float phase)
{
    const float x = phase <= 0.0f ? 0.0f : (phase > 1.0f ? 1.0f : phase);
    float y = x;
    if (s.curve > 0.0f)
        y = powf(x, s.curve + 1.0f);
    if (s.curve < 0.0f)
        y = float(1.0 - pow(1.0 - double(x), 1.0 - double(s.curve)));
    return y * s.delta + s.start;
}

struct Envelope
{
    float p[10] = {};
    double rate[4] = {};
    int state = 0, count = 0, total = 0;
    float phase = 0, tempo = 120, multiplier = 1;
    double samplesPerMs = 44.1;
    bool wrap = false;
    Segment segment;
    Segment frozen;
    float frozenPhase = 0;

    void times()
    {
        const float scale = 128.0f / tempo * multiplier;
        const float a = std::max(std::max(p[2], 0.01f) * scale, 4.0f);
        const float h = std::max(p[5], 0.01f) * scale;
        const float r = std::max(p[6], 0.01f) * scale;
        const float cycle = 468.75f * scale;
        const float z = cycle - h - r - a;
        rate[0] = 1.0 / (double(a) * samplesPerMs);
        rate[1] = 1.0 / (double(h) * samplesPerMs);
        rate[2] = 1.0 / (double(r) * samplesPerMs);
        rate[3] = z > 0.0f ? 1.0 / (double(z) * samplesPerMs) : 1.0;
        total = int(double(cycle) * samplesPerMs);
    }

    void build()
    {
        const Segment table[] = {{p[1], p[4] - p[1], float(rate[0]), p[3]},
                                 {p[4], 0, float(rate[1]), 0},
                                 {p[4], p[8] - p[4], float(rate[2]), p[7]},
                                 {p[8], 0, float(rate[3]), 0}};
        if (state < 4)
            segment = table[state];
        else if (state == 4)
        {
            const float now = levelAt(segment, phase);
            segment = {now, p[8] - now, float(1.0 / (double(p[9]) * samplesPerMs)), 0};
        }
        else
        {
            segment = {p[8], 0, 0, 0};
            phase = 0;
        }
    }

    void refresh()
    {
        times();
        build();
    }

    void set(int index, float value)
    {
        p[index] = value;
        refresh();
    }

    void start()
    {
        const float s = std::clamp(p[0], -1.0f, 1.0f);
        float f = s < 1.0f ? 1.0f - s : s;
        f = f - truncf(f);
        float left = (p[2] + p[5] + p[6]) * f;
        wrap = left > 0.0f;
        const int map[] = {2, 5, 6};
        int i = 0;
        while (i < 3 && left > 0.0f && left > p[map[i]])
            left -= p[map[i++]];
        state = i;
        phase = std::max(0.0f, left) / std::max(i < 3 ? p[map[i]] : 1.0f, 1.0f);
        if (p[2] < 1.0f && state == 0)
            state = 1;
        times();
        count = 0;
        build();
        frozen = segment;
        frozenPhase = phase;
    }

    float first() const { return levelAt(frozen, frozenPhase); }

    float process()
    {
        if (state != 5)
        {
            if (phase >= 1.0f)
            {
                if (state == 3 && wrap)
                {
                    wrap = false;
                    state = 0;
                }
                else
                    ++state;
                build();
                phase = phase - truncf(phase);
            }
            if (state < 4 && count > total)
            {
                state = 4;
                build();
                phase = 0;
            }
        }
        const float level = levelAt(segment, phase);
        phase += segment.increment;
        ++count;
        return level;
    }
};

struct Ducker
{
    float current[7] = {}, target[7] = {0, 1, 0, 0, 1, 1, 1};
    long since = 22, toStart = -1, toTrigger = -1, fadeLength = 0, fadeLeft = 150;
    float velocity = 1, pending = 1, depth = 0, gain = 0, tempo = 10;
    float fadeStep = 1.0f / 150.0f, fadeValue = 1;
    bool fading = false, initialised = false;
    float meter = 0;
    Envelope envelope;

    Ducker()
    {
        envelope.set(4, 1);
        envelope.set(8, 0);
        envelope.set(1, 0);
        envelope.set(9, 4);
        envelope.tempo = 10;
        setSampleRate(44100.0f);
    }

    void setSampleRate(float rate)
    {
        envelope.samplesPerMs = double(rate) * 0.001;
        envelope.refresh();
    }

    void setTempo(float bpm)
    {
        tempo = bpm;
        envelope.tempo = bpm;
        envelope.refresh();
        since = 22;
    }

    void setTimeAdjust(float beats)
    {
        envelope.multiplier = beats;
        envelope.refresh();
    }

    void setTimeOffset(float v) { envelope.set(0, 1.0f - v); }

    void setTriggers(long samples)
    {
        toTrigger = samples;
        toStart = samples + fadeLength;
    }

    void passOn(int i)
    {
        static constexpr int map[] = {2, 3, 5, 6, 7};
        if (i < 5)
            envelope.set(map[i], current[i]);
        else if (i == 5)
            depth = velocity * current[5];
        else
            gain = current[6];
    }

    void reset()
    {
        initialised = fading = false;
        envelope.state = 5;
        toStart = toTrigger = -1;
        meter = 0;
        envelope.tempo = tempo;
        envelope.refresh();
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
            const float first = envelope.first();
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
