// SPDX-License-Identifier: GPL-3.0-or-later
// Work that a frame does at its next idle: posted by other threads, or by an event that must not do it
// itself.
//
// A task that was not done when its frame closes is destroyed. Whoever waits for it learns that from what the
// task owns, such as a Sonvex::AnswerOnce.
#pragma once

#include <functional>
#include <thread>
#include <vector>

namespace Tovra
{
class CFrame;

class FrameTasks
{
public:
    // [window thread]  Answers true when it is done; otherwise it is called again at the next idle, before
    // the tasks that were posted after it. It may close the frame and post other tasks.
    using Task = std::function<bool(CFrame& frame)>;

    // [window thread]
    explicit FrameTasks(CFrame& owner);
    ~FrameTasks();
    FrameTasks(const FrameTasks&) = delete;
    FrameTasks& operator=(const FrameTasks&) = delete;

    // [any thread but audio]  False, with the task destroyed, if there is no open frame at that address: the
    // caller need not know whether the frame still exists.
    static bool post(CFrame* frame, Task task);
    // [any thread but audio]  Whether some open frame is idled on the calling thread.
    static bool isWindowThread();

    // [window thread]  Calls the tasks that were posted before. Does nothing from within a task.
    void run();
    // [window thread]  No task is called any more. The tasks that are waiting are destroyed.
    void close();

private:
    static FrameTasks* of(CFrame* frame);

    CFrame& frame;
    std::vector<Task> tasks; // these three are under the lock of all frames
    std::thread::id thread;
    bool isOpen = true;
    bool isRunning = false;
};
}
