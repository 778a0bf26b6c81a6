// SPDX-License-Identifier: GPL-3.0-or-later
// Parameter values that wait for their sample within a block.
//
// One thread at a time: TimedValues hands the list out. A property has at most one pending value. The list
// has room for more parameters than an effect has, so that it does not allocate on the audio thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Orbel
{
class ParameterProperty;

struct ParameterSetEvent
{
    // A value from 0 to 1, as hosts have it.
    static ParameterSetEvent at(long sampleOffset, float normalized, ParameterProperty& property);

    long sampleOffset;           // samples until it is due; 0 and below: now
    float value;                 // real value
    float normalized;            // the value as the host gave it
    ParameterProperty* property; // null in an event that was used
};

// The musical grid onto which a host's automation is pushed.
enum AutomationSyncResolution : int32_t
{
    automationSyncOff = -1,
    automationSync32nd = 0,
    automationSync16th = 1,
    automationSync8th = 2,
    automationSyncWhole = 3
};

class ParameterEventList
{
public:
    ParameterEventList() { events.reserve(reservedEvents); }

    int getNumEvents() const { return int(events.size()); }
    ParameterSetEvent* getEvent(int index) { return &events[size_t(index)]; }

    // Adds the event. If one of the same property waits already, that one takes the new offset and the new
    // value, but keeps its normalised value.
    void addEvent(ParameterSetEvent event);
    // The same, but an event that waits already is replaced as a whole.
    void replaceEvent(ParameterSetEvent event);
    // Drops every event, or only the used ones.
    void clear(bool removeAll);

    // Brings offsets beyond a block of so many samples to its last one.
    void keepWithin(long frames);
    // Makes every event due after so many samples.
    void delayTo(long samples);
    // How many of the next frames lie before the first event that falls on one of them.
    int lengthOfPiece(int frames) const;
    bool isDue(int index) const;
    // So many samples have passed.
    void advance(long frames);

private:
    static constexpr size_t reservedEvents = 64;

    ParameterSetEvent& waitingOrNew(const ParameterSetEvent& event);

    std::vector<ParameterSetEvent> events;
};
}
