// SPDX-License-Identifier: GPL-3.0-or-later
// All that an adapter hands to an effect for one block: the buses, the number of samples, the transport.
//
// [audio thread] It holds all its buses itself, so that an adapter makes one on its stack in every block
// without an allocation.
#pragma once

#include "Orbel/contract/AudioStereoBus.h"
#include "Orbel/contract/CHostTimeInfo.h"

namespace Orbel
{
class AudioBusInformation
{
public:
    static constexpr int maximumBuses = 24; // a side

    AudioBusInformation() = default;
    // numIn and numOut count stereo buses: the channels 2i and 2i + 1 make bus i. At most 24 buses a side get
    // their channels; the two counts stay as given.
    AudioBusInformation(float** inputChannels, int numIn, float** outputChannels, int numOut, int frames);

    // Move the external buses of one side on by so many samples, between the pieces of a block.
    void advanceInput(int frames);
    void advanceOutput(int frames);

    AudioStereoBus inputs[maximumBuses];
    AudioStereoBus outputs[maximumBuses];
    int32_t numInputBuses = 0;
    int32_t numOutputBuses = 0;
    int32_t numSamples = 0;
    CHostTimeInfo timeInfo;
};
}
