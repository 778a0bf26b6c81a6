// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/shot/ShotOwner.h"

#include "Tovrane/views/tree/CFrame.h"
#include "tools/common/ToolError.h"

namespace lodex
{
[[noreturn]] static void refuse(const char* step)
{
    throw ToolError("this window has no host: it cannot \"" + std::string(step) + '"');
}

void ShotOwner::idle()
{
    if (Tovra::CFrame* const shown = frame())
        shown->idle();
}

void ShotOwner::play(const std::string&, double, ShotPlayer&)
{
    refuse("play");
}

void ShotOwner::setTempo(double)
{
    refuse("bpm");
}

void ShotOwner::setParameter(const std::string&, const std::string&)
{
    refuse("set");
}

void ShotOwner::setTimeBase(const std::string&)
{
    refuse("timebase");
}
}
