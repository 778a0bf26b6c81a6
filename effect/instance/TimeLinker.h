// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the envelope's linked times in step, whichever threads write them, and stays out of the way while a
// state is read.
//
// A changed attack or hold moves the others by what it really changed. A time that somebody writes meanwhile
// is never overwritten by one that was read before. One thread at a time does the work; another that comes
// meanwhile leaves its change there, and the first one takes it along, so nobody waits, except for a reader
// of a state, who may wait for one move.
//
// While a state is read nothing moves. Reading and moving cannot end each other.
#pragma once

#include "CORE/Relaxed.h"
#include "effect/engine/LinkedTimes.h"

#include <atomic>

namespace Orbel
{
class ParameterChangeListener;
class ParameterProperty;
}

class TimeLinker
{
public:
    // [window thread] Before anything else. The properties stay their owner's; writer is not told of moves.
    void bind(Orbel::ParameterProperty& attack, Orbel::ParameterProperty& hold,
              Orbel::ParameterProperty& release, Orbel::ParameterChangeListener& writer);

    // [any thread] Whether times move each other; true at first.
    void setLinked(bool on) { linked = on; }
    // [any thread] The property has been written: moves the others, if it changed.
    void written(LinkedTime time);

    // [window thread] From here to endReading times are taken as they come. Both may come again without the
    // other: after a bank nobody ends it until the next state.
    void beginReading();
    void endReading();
    bool isReading() const { return state == reading; }

private:
    enum State : int
    {
        idle,
        moving,
        reading
    };

    bool enter(State next);
    void moveAll();
    void move(LinkedTime time);
    float moveHold(float formerAttackTime, float attack);
    void moveRelease(EnvelopeTimes before, LinkedTime time, float value);
    float& formerOf(LinkedTime time) { return time == LinkedTime::attack ? formerAttack : formerHold; }
    Orbel::ParameterProperty& propertyOf(LinkedTime time)
    {
        return time == LinkedTime::attack ? *attackTime : *holdTime;
    }

    Orbel::ParameterProperty* attackTime = nullptr;
    Orbel::ParameterProperty* holdTime = nullptr;
    Orbel::ParameterProperty* releaseTime = nullptr;
    Orbel::ParameterChangeListener* self = nullptr;

    Core::Relaxed<bool> linked = true;
    std::atomic<State> state = idle;
    std::atomic<unsigned> changes = 0; // a bit for each LinkedTime that was written and not looked at yet
    float formerAttack = 0.0f;         // what a change is measured against: belongs to who moves or reads
    float formerHold = 0.0f;
};
