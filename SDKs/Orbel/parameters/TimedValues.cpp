// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/TimedValues.h"

#include <cmath>

namespace Orbel
{
TimedValues::Access::Access(TimedValues& owner, bool allowed) : values(owner)
{
    if (!allowed)
        return;
    const std::thread::id self = std::this_thread::get_id();
    std::thread::id holder;
    outermost = values.listHolder.compare_exchange_strong(holder, self, std::memory_order_acquire);
    granted = outermost || holder == self;
}

TimedValues::Access::~Access()
{
    if (outermost)
        values.listHolder.store(std::thread::id(), std::memory_order_release);
}

void TimedValues::claim()
{
    if (!isAudioThread())
        audioThread = std::this_thread::get_id();
}

void TimedValues::beginBlock()
{
    claim();
    const Access access(*this, true);
    blockMissed = !access;
    if (access)
        inbox.moveInto(events);
}

TimedValues::Access TimedValues::list()
{
    claim();
    return Access(*this, !blockMissed);
}

// Whose the list is must be asked again once the list is taken: another thread may have claimed the values in
// between, and may be in the middle of its block.
void TimedValues::add(ParameterProperty& property, float normalized, int sampleOffset)
{
    if (std::isnan(normalized))
        return;
    const Access access(*this, isListOurs());
    if (!access || !isListOurs())
        return inbox.leave(property, normalized, sampleOffset);
    inbox.discard(property); // older than this value
    events.addEvent(ParameterSetEvent::at(sampleOffset, normalized, property));
}

void TimedValues::clear()
{
    const Access access(*this, isListOurs());
    if (access && isListOurs() && !blockMissed)
        events.clear(true);
    if (isAudioThread())
        blockMissed = false;
    else
        inbox.clear();
}
}
