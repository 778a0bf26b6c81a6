// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/FrameTasks.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <utility>

namespace Tovra
{
namespace
{
// All frames that are open.
struct OpenFrames
{
    std::mutex lock;
    std::vector<FrameTasks*> list;
};

OpenFrames& openFrames()
{
    static OpenFrames all;
    return all;
}
}

FrameTasks::FrameTasks(CFrame& owner) : frame(owner), thread(std::this_thread::get_id())
{
    const std::lock_guard guard(openFrames().lock);
    openFrames().list.push_back(this);
}

FrameTasks::~FrameTasks()
{
    close();
}

void FrameTasks::close()
{
    std::vector<Task> dropped; // destroyed after the lock: that may call anything
    const std::lock_guard guard(openFrames().lock);
    dropped.swap(tasks);
    isOpen = false;
    std::erase(openFrames().list, this);
}

FrameTasks* FrameTasks::of(CFrame* wanted)
{
    const auto& list = openFrames().list;
    const auto found = std::find_if(list.begin(), list.end(),
                                    [=](const FrameTasks* each) { return &each->frame == wanted; });
    return found != list.end() ? *found : nullptr;
}

bool FrameTasks::post(CFrame* wanted, Task task)
{
    const std::lock_guard guard(openFrames().lock);
    FrameTasks* const found = of(wanted);
    if (found != nullptr)
        found->tasks.push_back(std::move(task));
    return found != nullptr;
}

bool FrameTasks::isWindowThread()
{
    const std::lock_guard guard(openFrames().lock);
    return std::any_of(openFrames().list.begin(), openFrames().list.end(),
                       [](const FrameTasks* each) { return each->thread == std::this_thread::get_id(); });
}

void FrameTasks::run()
{
    std::vector<Task> due;
    if (isRunning)
        return;
    {
        const std::lock_guard guard(openFrames().lock);
        thread = std::this_thread::get_id();
        due.swap(tasks);
    }
    std::vector<Task> again;
    isRunning = true;
    for (Task& task : due)
        if (isOpen && !task(frame))
            again.push_back(std::move(task));
    isRunning = false;
    if (again.empty())
        return;
    const std::lock_guard guard(openFrames().lock);
    if (isOpen)
        tasks.insert(tasks.begin(), std::make_move_iterator(again.begin()),
                     std::make_move_iterator(again.end()));
}
}
