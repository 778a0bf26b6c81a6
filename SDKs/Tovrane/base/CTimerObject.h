// SPDX-License-Identifier: GPL-3.0-or-later
// The toolkit's timers: one list for the whole process, driven by one timer of the current run loop.
//
// That timer has the shortest period asked for so far, and keeps it until nothing is registered any more; the
// other periods are counted in its ticks. Times advance in steps of 1/60 s.
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
    // Unregisters the object.
    virtual ~CTimerObject();

    // [window thread]  The period has passed. May register and remove this object and others, and may destroy
    // this object.
    virtual void onTimer(int millisecondsSinceLastCall) = 0;

private:
    friend class TimerList;
    std::int64_t lastTick = 0; // milliseconds
};

// [window thread]  Calls the object about every periodMs milliseconds (at least 1), and with callNow also
// immediately, with 0. Registering it again changes its period. False while there is no run loop: the calls
// begin when there is one.
bool RegisterTimerObject(CTimerObject* object, long periodMs, bool callNow);

// [window thread]  The object is not called any more. Always true.
bool RemoveTimerObject(CTimerObject* object);

// [any thread]  Milliseconds since some moment in the past, in steps of 1/60 s.
std::int64_t Tovra_getTicks();
}
