// SPDX-License-Identifier: GPL-3.0-or-later
// Checks in development builds that a seam is called on the thread that its tag names.
//
// The tags, [audio thread], [window thread] and so on, are those of docs/architecture.md. Whatever serves a
// host's audio thread stays in an AudioSection for the length of the host's call. From that follow three
// checks: an audio seam must not come on a second thread while one is inside; a window seam must not come on
// a thread that is inside the section of any object; and two threads must not be inside one section at once.
//
// A fault goes to a handler, which tests replace. The default prints the first fault of the process to
// standard error and goes on: a host is never stopped. With NDEBUG the checks compile to nothing.
//
// Which threads are inside is kept in a table of atomic ids and not in a thread_local flag, whose first use
// on a thread may allocate in an object that a host has loaded.
#pragma once

#include <atomic>
#include <thread>

namespace Core
{
// seam is what was called, as "IComponent::getState"; fault is a sentence without a full stop.
using ThreadFaultHandler = void (*)(const char* seam, const char* fault);

// [any thread]  Null puts the default handler back. Returns the handler from before, null for the default.
ThreadFaultHandler setThreadFaultHandler(ThreadFaultHandler handler);

#ifdef NDEBUG

inline void checkWindowThread(const char*) {}

class AudioSection
{
public:
    class Stay
    {
    public:
        Stay(AudioSection&, const char*) {}
        ~Stay() {} // an empty one, so that an unused Stay is no warning
    };

    void checkAudioThread(const char*) const {}
};

#else

// [window thread], or any other that is not inside an audio section: reports one that is.
void checkWindowThread(const char* seam);

// One for each object that a host processes.
class AudioSection
{
public:
    // [audio thread]  From the first line of a host's call to its last. A thread may stay again inside its
    // stay.
    class Stay
    {
    public:
        Stay(AudioSection& entered, const char* seam);
        ~Stay();
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;

    private:
        AudioSection& section;
        bool entered = false;                           // and not a stay within another
        std::atomic<std::thread::id>* listed = nullptr; // this thread's place among those that are inside
    };

    // [audio thread]  Reports a call while another thread is inside. Nobody inside is allowed: tests and
    // tools call seams on their own.
    void checkAudioThread(const char* seam) const;

private:
    std::atomic<std::thread::id> inside{std::thread::id()};
};

#endif
}
