// All that an adapter hands to an effect for one block: the buses, the count of frames, the transport.
//
// [audio thread] It has room for all its buses inside, so that an adapter builds one on its stack in
// every block without an allocation.
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
    // numIn and numOut count stereo buses: the channels 2i and 2i + 1 make bus i, of numSamples samples.
    // At most 24 buses a side are wired; the two counts keep what was given.
    AudioBusInformation(float** inputChannels, int numIn, float** outputChannels, int numOut, int frames);

    // Moves the external buses of one side ahead, between the pieces of a block.
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
