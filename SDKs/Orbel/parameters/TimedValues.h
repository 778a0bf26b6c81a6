// SPDX-License-Identifier: GPL-3.0-or-later
// The timed parameter values of one effect: those of the audio thread in the list of the present block, and
// those of other threads in an inbox until the next block begins.
//
// The audio thread is the thread that claimed the values last, at the start of a host's call; its own values
// go straight to the list, in their order. As long as no thread has claimed them, any thread's do. Hosts may
// change their audio thread at any time, and the one from before may have the list just then: so the list is
// handed out to one thread at a time, and a thread that finds it taken does without it. A value then goes to
// the inbox, and a block that finds the list taken at its start leaves all values to the next block.
#pragma once

#include "CORE/Relaxed.h"
#include "Orbel/parameters/ParameterEventList.h"
#include "Orbel/parameters/TimedValueInbox.h"

#include <atomic>
#include <thread>

namespace Orbel
{
class TimedValues
{
public:
    // The list, for as long as the object lives; false where another thread has the list. A thread may have
    // it several times over: writing a value may make a listener add another one.
    class Access
    {
    public:
        Access(TimedValues& owner, bool allowed);
        ~Access();
        Access(const Access&) = delete;
        Access& operator=(const Access&) = delete;

        explicit operator bool() const { return granted; }
        ParameterEventList* operator->() const { return &values.events; }

    private:
        TimedValues& values;
        bool granted = false;
        bool outermost = false;
    };

    // [audio thread]  The calling thread is the audio thread from now on.
    void claim();
    // [audio thread]  A block begins: takes what other threads have left until now into the list. Claims.
    void beginBlock();
    // [audio thread]  The list of that block; false where the block has none. Claims.
    Access list();

    // [any thread]  A NaN is not taken.
    void add(ParameterProperty& property, float normalized, int sampleOffset);
    // [any thread]  On the audio thread, the end of a block: empties the list and leaves the inbox alone. On
    // another thread: drops what the inbox holds then. Before the first claim it does both.
    void clear();

private:
    bool isAudioThread() const { return audioThread.load() == std::this_thread::get_id(); }
    bool isListOurs() const { return isAudioThread() || audioThread.load() == std::thread::id(); }

    Core::Relaxed<std::thread::id> audioThread = std::thread::id();
    std::atomic<std::thread::id> listHolder{std::thread::id()}; // of no thread: the list is free
    Core::Relaxed<bool> blockMissed = false; // the list was taken when the present block began
    ParameterEventList events;               // belongs to the listHolder
    TimedValueInbox inbox;
};
}
