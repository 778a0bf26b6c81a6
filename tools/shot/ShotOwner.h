// SPDX-License-Identifier: GPL-3.0-or-later
// The window that a script drives, and the host's side of it.
#pragma once

#include <string>

namespace Tovra
{
class CFrame;
}

namespace lodex
{
class ShotPlayer;

// [window thread]
class ShotOwner
{
public:
    virtual ~ShotOwner() = default;

    // A frame that was made by useHeadlessFrames; null once the window is closed.
    virtual Tovra::CFrame* frame() = 0;
    // What the window's timer does: brings what is shown up to date, and paints. For an editor its own idle.
    virtual void idle();
    // Whether that timer already runs on the current run loop. Otherwise the player calls idle every 25 ms.
    virtual bool idlesItself() const { return false; }
    // The line of text about what is under the mouse.
    virtual std::string readOut() const { return {}; }

    // The steps of the host. Each throws a ToolError for what it cannot take, as all of them do here. play
    // lets time go by between its blocks (ShotPlayer::idle).
    virtual void play(const std::string& path, double seconds, ShotPlayer& player);
    virtual void setTempo(double beatsPerMinute);
    virtual void setParameter(const std::string& id, const std::string& value);
    virtual void setTimeBase(const std::string& name);
};
}
