// SPDX-License-Identifier: GPL-3.0-or-later
// The events of a render: what happens at which frame, one event a line.
//
//   at SAMPLE set ID VALUE        at SAMPLE play 0|1         at SAMPLE timebase NAME
//   at SAMPLE tempo BPM           at SAMPLE ppq POSITION     # a comment, also after an event
//
// The lines are sorted by SAMPLE; those of the same SAMPLE happen in the order of the file.
#pragma once

#include "tools/render/RenderEngine.h"

#include <istream>
#include <string>
#include <vector>

namespace lodex
{
struct Event
{
    enum class Kind
    {
        set,
        tempo,
        play,
        ppq,
        timeBase
    };

    int64_t sample = 0; // frame of the file
    Kind kind = Kind::set;
    int parameter = 0;  // of a set: index of RenderEngine::parameters()
    double value = 0.0; // in the parameter's unit, beats a minute, 0 or 1, quarter notes, beats
};

// The events of a stream. Throws a ToolError that names the line, as "name:number", and says what was
// expected there.
std::vector<Event> parseEvents(std::istream& text, const std::string& name,
                               const std::vector<ParameterInfo>& parameters);

// The events of a file of at most 64 MiB.
std::vector<Event> readEventsFile(const std::string& path, const std::vector<ParameterInfo>& parameters);
}
