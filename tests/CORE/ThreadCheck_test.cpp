// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/ThreadCheck.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>

#ifndef NDEBUG // a release build checks nothing
using Core::AudioSection;

namespace
{
std::string reports;

void note(const char* seam, const char* fault)
{
    reports += std::string(seam) + ": " + std::string(fault).substr(0, 8) + "; ";
}

// What is reported while work runs, here or on a thread of its own.
template <typename Work>
std::string reported(Work work)
{
    reports.clear();
    const Core::ThreadFaultHandler former = Core::setThreadFaultHandler(note);
    work();
    EXPECT_EQ(Core::setThreadFaultHandler(former), note);
    return reports;
}

template <typename Work>
std::string reportedElsewhere(Work work)
{
    return reported([&] { std::thread(work).join(); });
}
}

TEST(ThreadCheck, ReportsSeamsThatComeOnTheWrongThread)
{
    AudioSection section, other;
    const auto window = [] { Core::checkWindowThread("getState"); };
    const auto audio = [&] { section.checkAudioThread("prepare"); };
    const auto enter = [&] { const AudioSection::Stay stay(section, "process"); };
    EXPECT_EQ(reported(window) + reported(audio) + reported(enter) + reported(window), "") << "nobody inside";
    {
        const AudioSection::Stay stay(section, "process");
        EXPECT_EQ(reported(audio) + reported(enter), "") << "on the same thread";
        EXPECT_EQ(reported(window), "getState: a window; ") << "an inner stay ended, the outer one goes on";
        EXPECT_EQ(reportedElsewhere(window), "");
        EXPECT_EQ(reportedElsewhere(audio), "prepare: an audio; ");
        EXPECT_EQ(reportedElsewhere(enter), "process: a second; ");
        EXPECT_EQ(reportedElsewhere([&] { const AudioSection::Stay stay2(other, "process"); }), "");
        EXPECT_EQ(reportedElsewhere(audio), "prepare: an audio; ")
            << "who was refused has not taken the place";
    }
    EXPECT_EQ(reported(window) + reportedElsewhere(enter), "") << "all have left";
}
#endif
