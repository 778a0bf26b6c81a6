// SPDX-License-Identifier: GPL-3.0-or-later
// Where the music is: the transport of the host that the tool stands in for.
//
// The position is kept in quarter notes and in double precision. It advances while the transport plays
// and stands while it does not.
#pragma once

#include <cstdint>

namespace lodex
{
struct Transport
{
    static constexpr double lowestTempo = 1.0; // beats a minute
    static constexpr double highestTempo = 1000.0;
    static constexpr double highestPosition = 1.0e6; // quarter notes, on either side of 0

    double tempo = 120.0;
    double ppq = 0.0;
    bool playing = true;

    // Quarter notes that frames last at rate (in hertz) while the transport plays; 0 while it stands.
    double beatsIn(int64_t frames, double rate) const
    {
        return playing ? double(frames) / (60.0 / tempo * rate) : 0.0;
    }
    void advance(int64_t frames, double rate) { ppq += beatsIn(frames, rate); }
};
}
