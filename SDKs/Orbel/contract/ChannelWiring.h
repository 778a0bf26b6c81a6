// SPDX-License-Identifier: GPL-3.0-or-later
// The channel pointers of one block: two for each stereo bus, whatever the host has connected.
//
// [audio thread]  Made on the stack in every block; allocates nothing. The pointers are the host's, or the
// spare channel's where the host has none. The spare channel is shared: all missing inputs read silence from
// it, and all missing outputs write into it what nobody hears.
#pragma once

#include "Orbel/contract/AudioBusInformation.h"

namespace Orbel
{
// The channels that a host gives for one bus; null where it gives none.
struct HostBus
{
    float* left = nullptr;
    float* right = nullptr;
    bool mono = false; // the bus has a left channel alone, which is to be heard on both sides
};

class ChannelWiring
{
public:
    static constexpr int maximumBuses = AudioBusInformation::maximumBuses; // a side

    // spare is a channel of at least so many samples that belongs to the adapter and no host.
    ChannelWiring(float* spare, int frames) : spareChannel(spare), numSamples(frames) {}

    // A bus with an index beyond the maximum is left out. The right side of a mono bus is a copy in the spare
    // channel, because an effect that works in place may write the left side before it reads the right one.
    // There is one spare channel: wire the main bus last, so that the copy is its own.
    void wireInput(int index, const HostBus& bus);
    void wireOutput(int index, const HostBus& bus);

    // For AudioBusInformation. Only the buses that were wired have pointers.
    float** inputs() { return inputChannels; }
    float** outputs() { return outputChannels; }

private:
    static bool hasRoom(int index) { return index >= 0 && index < maximumBuses; }
    void wire(float** channels, int index, const HostBus& bus) const;

    float* const spareChannel;
    const int numSamples;
    float* inputChannels[2 * maximumBuses];
    float* outputChannels[2 * maximumBuses];
};
}
