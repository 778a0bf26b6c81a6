// SPDX-License-Identifier: GPL-3.0-or-later
// Timed parameter values from threads other than the one that renders: each leaves the newest value of a
// property in that property's slot, and the audio thread moves them all into the list of its block.
//
// No operation waits, locks or allocates. How the threads meet:
//
//   - A slot is one 64-bit word: the normalised value, the sample offset, and the number of clears before
//     it was written. A newer value replaces an older one; nothing else is lost.
//   - Slots that hold a value are linked into one chain. The thread that wrote into an unlinked slot links
//     it, and no other thread does, so that a slot is never in two chains.
//   - The audio thread takes the whole chain at once and reverses it, so that the properties come in the
//     order in which their first values arrived. It reads a slot's link before it marks the slot as
//     unlinked, because from then on another thread may link it again.
//   - A clear counts one up, and empties the slots in the chain. A slot that a stalled thread links only
//     after that has the older number in its word, and its value is dropped.
#pragma once

#include "Orbel/parameters/TimedValueSlot.h"

#include <atomic>

namespace Orbel
{
class ParameterEventList;
class ParameterProperty;

class TimedValueInbox
{
public:
    // [any thread]  Leaves a value for the property, which lives as long as the inbox. normalized is no NaN.
    void leave(ParameterProperty& property, float normalized, int sampleOffset);
    // [any thread]  Drops the values that are there now.
    void clear();
    // [audio thread]  Drops the value of one property.
    void discard(ParameterProperty& property);
    // [audio thread]  Puts every value into the list, in place of one of the same property, and leaves the
    // slots empty.
    void moveInto(ParameterEventList& list);

private:
    void link(ParameterProperty& property);
    ParameterProperty* takeChain();
    static ParameterProperty* reversed(ParameterProperty* taken);

    std::atomic<ParameterProperty*> chain{nullptr}; // the last that was linked
    std::atomic<std::uint32_t> clears{0};
};
}
