#include "Orbel/parameters/ParameterEventList.h"

#include <algorithm>

namespace Orbel
{
void ParameterEventList::addEvent(ParameterSetEvent event)
{
    const auto waiting =
        std::find_if(events.rbegin(), events.rend(),
                     [&](const ParameterSetEvent& other) { return other.property == event.property; });
    if (waiting == events.rend())
    {
        events.push_back(event);
        return;
    }
    waiting->sampleOffset = event.sampleOffset;
    waiting->value = event.value;
}

void ParameterEventList::clear(bool removeAll)
{
    if (removeAll)
        events.clear();
    else
        std::erase_if(events, [](const ParameterSetEvent& event) { return !event.property; });
}
}
