// SPDX-License-Identifier: GPL-3.0-or-later
// What the gain record of a render tells in a few words: how far the gain fell, and how often.
#pragma once

#include <string>

namespace lodex
{
class GainSummary
{
public:
    // A piece of the gain record: see gainFromRecord.
    void add(const float* record, int count);

    int ducks() const { return falls; }
    float lowest() const { return lowestGain; }
    // "8 ducks, the deepest to -12.0 dB", "1 duck, to silence", "no ducks".
    std::string text() const;

private:
    float lowestGain = 1.0f;
    float turn = 1.0f; // the highest gain since the last fall, or the lowest since it began
    bool falling = false;
    int falls = 0;
};
}
