// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterEventList.h"

#include "Orbel/parameters/ParameterProperty.h"

#include <algorithm>

namespace Orbel
{
ParameterSetEvent ParameterSetEvent::at(long sampleOffset, float normalized, ParameterProperty& property)
{
    return {sampleOffset, float(property.denormalize(normalized)), normalized, &property};
}

// The event of the same property, else a new one that is a copy of this one.
ParameterSetEvent& ParameterEventList::waitingOrNew(const ParameterSetEvent& event)
{
    const auto waiting =
        std::find_if(events.rbegin(), events.rend(),
                     [&](const ParameterSetEvent& other) { return other.property == event.property; });
    return waiting != events.rend() ? *waiting : events.emplace_back(event);
}

void ParameterEventList::addEvent(ParameterSetEvent event)
{
    ParameterSetEvent& waiting = waitingOrNew(event);
    waiting.sampleOffset = event.sampleOffset;
    waiting.value = event.value;
}

void ParameterEventList::replaceEvent(ParameterSetEvent event)
{
    waitingOrNew(event) = event;
}

void ParameterEventList::keepWithin(long frames)
{
    for (ParameterSetEvent& event : events)
        event.sampleOffset = std::min(event.sampleOffset, frames - 1);
}

void ParameterEventList::delayTo(long samples)
{
    for (ParameterSetEvent& event : events)
        event.sampleOffset = samples;
}

int ParameterEventList::lengthOfPiece(int frames) const
{
    for (const ParameterSetEvent& event : events)
        if (event.property && event.sampleOffset >= 0 && event.sampleOffset < frames)
            frames = int(event.sampleOffset);
    return frames;
}

bool ParameterEventList::isDue(int index) const
{
    const ParameterSetEvent& event = events[size_t(index)];
    return event.property && event.sampleOffset <= 0;
}

void ParameterEventList::advance(long frames)
{
    for (ParameterSetEvent& event : events)
        event.sampleOffset -= frames;
}

void ParameterEventList::clear(bool removeAll)
{
    if (removeAll)
        events.clear();
    else
        std::erase_if(events, [](const ParameterSetEvent& event) { return !event.property; });
}
}
