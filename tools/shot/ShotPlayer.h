// SPDX-License-Identifier: GPL-3.0-or-later
// Plays a script on a window without a screen, in virtual time, and records what it brings to light.
//
//   VirtualTime time;
//   Window window;                       // a ShotOwner
//   ShotPlayer player(window, time);
//   player.play(readShotScript(path), path);
//   std::puts(toJson(player.record()).dump(2).c_str());
//
// Time goes by in "idle" and "play" alone. Messages are shown and answered in the window itself, where
// useMessageViews was called.
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "tools/shot/ShotAnswers.h"
#include "tools/shot/ShotOwner.h"
#include "tools/shot/ShotRecord.h"
#include "tools/shot/ShotScript.h"
#include "tools/shot/ShotUser.h"
#include "tools/shot/VirtualTime.h"

#include <memory>

namespace lodex
{
// [window thread]
class ShotPlayer
{
public:
    // Both outlive the player. Throws a ToolError if the owner's frame is not a headless one.
    ShotPlayer(ShotOwner& owner, VirtualTime& time);
    ShotPlayer(const ShotPlayer&) = delete;
    ShotPlayer& operator=(const ShotPlayer&) = delete;

    // Plays the steps, completes the record, and ends a gesture that is open then. A ToolError of a step says
    // where it stands, as "name:line".
    void play(const std::vector<ShotStep>& steps, const std::string& name);
    // Lets so many milliseconds go by: timers are called, and the window is idled.
    void idle(int milliseconds);
    // Draws what is dirty and writes what is seen, also an open text field, as a PNG file. Throws a ToolError
    // if that fails.
    void savePicture(const std::string& path);

    const ShotRecord& record() const { return recorded; }

private:
    void playStep(const ShotStep& step);
    void playUserStep(const ShotStep& step);
    void playHostStep(const ShotStep& step);
    void tick();

    ShotOwner& owner;
    VirtualTime& time;
    ShotRecord recorded;
    std::unique_ptr<ShotAnswers> answers;
    std::unique_ptr<ShotUser> user;
    Tovra::RepeatingTimer drawing;
    Tovra::Kept<Tovra::HeadlessFrame> window;
};
}
