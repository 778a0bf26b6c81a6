// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/ChannelWiring.h"

#include "DSP/VectorPrimitives.h"

namespace Orbel
{
void ChannelWiring::wire(float** channels, int index, const HostBus& bus) const
{
    float** const pair = channels + std::ptrdiff_t(2) * index;
    pair[0] = bus.left ? bus.left : spareChannel;
    pair[1] = bus.right ? bus.right : spareChannel;
}

void ChannelWiring::wireInput(int index, const HostBus& bus)
{
    if (!hasRoom(index))
        return;
    if (bus.left && bus.mono)
        ippsCopy_32f(bus.left, spareChannel, numSamples);
    else if (!bus.left || !bus.right)
        ippsZero_32f(spareChannel, numSamples);
    wire(inputChannels, index, bus);
}

void ChannelWiring::wireOutput(int index, const HostBus& bus)
{
    if (hasRoom(index))
        wire(outputChannels, index, bus);
}
}
