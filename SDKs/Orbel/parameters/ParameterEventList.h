// Parameter values that wait for their sample within a block.
//
// [audio thread] alone: an adapter fills the list ahead of a block, and the effect's base class brings
// the values in where they are due. A parameter has at most one pending value. The list has room for
// more parameters than an effect has, so that it doesn't allocate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Orbel
{
class ParameterProperty;

struct ParameterSetEvent
{
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

    // Adds the event; where one of the same property waits, that one takes the new offset and value and
    // keeps its normalised value.
    void addEvent(ParameterSetEvent event);
    // Drops every event, or only the used ones.
    void clear(bool removeAll);

private:
    static constexpr size_t reservedEvents = 64;
    std::vector<ParameterSetEvent> events;
};
}
