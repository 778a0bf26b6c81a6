// Timers of the toolkit: one process-wide list that ticks on one timer of the current run loop.
//
// The tick is that of the shortest period ever asked for, and never gets slower again while anything is
// registered; other periods are counted in whole ticks. Times go in steps of 1/60 s.
#pragma once

#include <cstdint>

namespace Tovra
{
class CTimerObject
{
public:
    CTimerObject() = default;
    CTimerObject(const CTimerObject&) {} // a copy is not registered
    CTimerObject& operator=(const CTimerObject&) { return *this; }
    // Takes itself off the list.
    virtual ~CTimerObject();

    // [window thread]  Its period is over; so many milliseconds since the last time. May register and remove
    // itself and others, and destroy itself.
    virtual void onTimer(int elapsedMilliseconds) = 0;

private:
    friend class TimerList;
    std::int64_t lastTick = 0; // milliseconds
};

// [window thread]  Calls the object about every periodMs milliseconds (at least 1), and with callNow once
// with 0 at once. Registering it again changes its period. False while there is no run loop to tick on: the
// object is called once there is one.
bool RegisterTimerObject(CTimerObject* object, long periodMs, bool callNow);

// [window thread]  From here on the object is not called. Always true.
bool RemoveTimerObject(CTimerObject* object);

// [any thread]  Milliseconds in steps of 1/60 s, from some moment in the past.
std::int64_t Tovra_getTicks();
}
