// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/TimedValueInbox.h"

#include "Orbel/parameters/ParameterEventList.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Orbel
{
namespace
{
using Word = std::uint64_t;

constexpr int clearBits = 8;
constexpr int offsetBits = 24; // enough for any block; an offset beyond the block means its last sample
constexpr int farthest = (1 << (offsetBits - 1)) - 1;

// A value is never a NaN. So two words with a NaN in its place have meanings of their own: the slot's
// unlinked, and this one.
constexpr Word linkedEmpty = TimedValueSlot::unlinked - 1;

struct LeftValue
{
    float normalized;
    int sampleOffset;
    std::uint8_t clears; // before it was left, modulo 256

    Word packed() const
    {
        const auto offset = std::uint32_t(std::clamp(sampleOffset, -farthest, farthest));
        return Word(std::bit_cast<std::uint32_t>(normalized)) << 32 | offset << clearBits | clears;
    }

    static LeftValue unpack(Word word)
    {
        const auto low = std::int32_t(std::uint32_t(word));
        return {std::bit_cast<float>(std::uint32_t(word >> 32)), low >> clearBits, std::uint8_t(low)};
    }
};

bool isValue(Word word)
{
    return word < linkedEmpty;
}
}

// The clears are read after the word that is to be replaced: so a value from before a clear never replaces
// one from after it.
void TimedValueInbox::leave(ParameterProperty& property, float normalized, int sampleOffset)
{
    std::atomic<Word>& slot = property.timedValue.word;
    Word before = slot.load();
    Word now;
    do
        now = LeftValue{normalized, sampleOffset, std::uint8_t(clears.load())}.packed();
    while (!slot.compare_exchange_weak(before, now));
    if (before == TimedValueSlot::unlinked)
        link(property);
}

void TimedValueInbox::link(ParameterProperty& property)
{
    ParameterProperty*& next = property.timedValue.next;
    next = chain.load();
    while (!chain.compare_exchange_weak(next, &property))
    {
    }
}

ParameterProperty* TimedValueInbox::takeChain()
{
    return chain.load(std::memory_order_relaxed) ? chain.exchange(nullptr) : nullptr;
}

void TimedValueInbox::clear()
{
    clears.fetch_add(1);
    for (ParameterProperty* each = takeChain(); each;)
    {
        TimedValueSlot& slot = each->timedValue;
        each = slot.next;
        slot.word = TimedValueSlot::unlinked;
    }
}

// A value that arrives while this runs is newer and stays.
void TimedValueInbox::discard(ParameterProperty& property)
{
    std::atomic<Word>& slot = property.timedValue.word;
    Word older = slot.load();
    if (isValue(older))
        slot.compare_exchange_strong(older, linkedEmpty);
}

ParameterProperty* TimedValueInbox::reversed(ParameterProperty* taken)
{
    ParameterProperty* result = nullptr;
    while (taken)
    {
        ParameterProperty* const next = std::exchange(taken->timedValue.next, result);
        result = std::exchange(taken, next);
    }
    return result;
}

void TimedValueInbox::moveInto(ParameterEventList& list)
{
    for (ParameterProperty* each = reversed(takeChain()); each;)
    {
        ParameterProperty& property = *each;
        each = property.timedValue.next;
        const Word word = property.timedValue.word.exchange(TimedValueSlot::unlinked);
        const LeftValue left = LeftValue::unpack(word);
        if (isValue(word) && left.clears == std::uint8_t(clears.load()))
            list.replaceEvent(ParameterSetEvent::at(left.sampleOffset, left.normalized, property));
    }
}
}
