// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/instance/TimeLinker.h"

#include "Orbel/parameters/ParameterProperty.h"

#include <thread>

using Orbel::ParameterProperty;

static unsigned bitOf(LinkedTime time)
{
    return 1u << unsigned(time);
}

static TimeRange rangeOf(const ParameterProperty& property)
{
    return {property.getMin(), property.getMax()};
}

void TimeLinker::bind(ParameterProperty& attack, ParameterProperty& hold, ParameterProperty& release,
                      Orbel::ParameterChangeListener& writer)
{
    attackTime = &attack;
    holdTime = &hold;
    releaseTime = &release;
    self = &writer;
    formerAttack = attack.getCurrentValue();
    formerHold = hold.getCurrentValue();
}

bool TimeLinker::enter(State next)
{
    State expected = idle;
    return state.compare_exchange_strong(expected, next);
}

void TimeLinker::written(LinkedTime time)
{
    changes.fetch_or(bitOf(time));
    moveAll();
}

// Whoever leaves looks once more: a change that came in the last moment found the place still taken.
void TimeLinker::moveAll()
{
    while (changes != 0 && enter(moving))
    {
        const unsigned taken = changes.exchange(0);
        for (const LinkedTime time : {LinkedTime::attack, LinkedTime::hold})
            if (taken & bitOf(time))
                move(time);
        state = idle;
    }
}

void TimeLinker::move(LinkedTime time)
{
    const float value = propertyOf(time).getCurrentValue();
    const float former = formerOf(time);
    formerOf(time) = value;
    if (!linked || value == former)
        return;
    EnvelopeTimes before = {former, former, releaseTime->getCurrentValue()};
    if (time == LinkedTime::attack)
        before.hold = moveHold(former, value);
    moveRelease(before, time, value);
}

// Gives the hold what the attack lost; the hold from which that was worked out. A hold that another thread
// writes between reading and writing is read again.
float TimeLinker::moveHold(float formerAttackTime, float attack)
{
    for (;;)
    {
        const float hold = holdTime->getCurrentValue();
        const float moved = linkedTimes({formerAttackTime, hold, 0.0f}, LinkedTime::attack, attack,
                                        rangeOf(*holdTime), rangeOf(*releaseTime))
                                .hold;
        if (moved != hold && !holdTime->replaceValue(hold, moved, self))
            continue;
        // A hold that was written and not looked at yet keeps its distance to the former one.
        formerHold = formerHold == hold ? moved : formerHold + (moved - hold);
        return hold;
    }
}

void TimeLinker::moveRelease(EnvelopeTimes before, LinkedTime time, float value)
{
    for (;;)
    {
        before.release = releaseTime->getCurrentValue();
        const float moved =
            linkedTimes(before, time, value, rangeOf(*holdTime), rangeOf(*releaseTime)).release;
        if (moved == before.release || releaseTime->replaceValue(before.release, moved, self))
            return;
    }
}

void TimeLinker::beginReading()
{
    while (!enter(reading) && state != reading)
        std::this_thread::yield();
}

void TimeLinker::endReading()
{
    if (state != reading)
        return;
    changes = 0;
    formerAttack = attackTime->getCurrentValue();
    formerHold = holdTime->getCurrentValue();
    state = idle;
    moveAll();
}
