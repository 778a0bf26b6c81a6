// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/EventsFile.h"

#include "tools/common/InputFile.h"
#include "tools/common/Text.h"
#include "tools/common/TimeBase.h"
#include "tools/common/ToolError.h"

#include <limits>
#include <sstream>

namespace lodex
{
namespace
{
// What follows an action's word. rest is never empty and has no blanks around it.
using ReadArguments = void (*)(Event&, std::string_view rest, const std::vector<ParameterInfo>&);

struct Action
{
    std::string_view word;
    Event::Kind kind;
    std::string_view arguments; // how a message names them
    ReadArguments read;
};

void readSet(Event& event, std::string_view rest, const std::vector<ParameterInfo>& parameters)
{
    const std::string_view id = takeWord(rest);
    const ParameterValue resolved = resolveSet(parameters, id, rest);
    event.parameter = resolved.parameter;
    event.value = resolved.value;
}

void readTempo(Event& event, std::string_view rest, const std::vector<ParameterInfo>&)
{
    event.value = numberInRange("tempo", rest, Transport::lowestTempo, Transport::highestTempo);
}

void readPlay(Event& event, std::string_view rest, const std::vector<ParameterInfo>&)
{
    if (rest != "0" && rest != "1")
        throw ToolError("play takes 0 or 1, not " + inQuotes(rest));
    event.value = rest == "1";
}

void readPosition(Event& event, std::string_view rest, const std::vector<ParameterInfo>&)
{
    event.value = numberInRange("ppq", rest, -Transport::highestPosition, Transport::highestPosition);
}

void readTimeBase(Event& event, std::string_view rest, const std::vector<ParameterInfo>&)
{
    event.value = timeBaseByName(rest);
}

constexpr Action actions[] = {
    {"set", Event::Kind::set, "ID VALUE", readSet},
    {"tempo", Event::Kind::tempo, "BPM", readTempo},
    {"play", Event::Kind::play, "0|1", readPlay},
    {"ppq", Event::Kind::ppq, "POSITION", readPosition},
    {"timebase", Event::Kind::timeBase, "NAME", readTimeBase},
};

const Action& findAction(std::string_view word)
{
    for (const Action& action : actions)
        if (action.word == word)
            return action;
    throw ToolError("expected set, tempo, play, ppq or timebase behind SAMPLE, not " + inQuotes(word));
}

Event parseEvent(std::string_view line, const std::vector<ParameterInfo>& parameters)
{
    const std::string_view at = takeWord(line);
    if (at != "at")
        throw ToolError("expected \"at SAMPLE ...\", not " + inQuotes(at));
    Event event;
    event.sample = wholeNumberInRange("SAMPLE", takeWord(line), 0, int64_t(1) << 53);
    const Action& action = findAction(takeWord(line));
    if (line.empty())
        throw ToolError("expected \"at SAMPLE " + std::string(action.word) + ' ' +
                        std::string(action.arguments) + '"');
    event.kind = action.kind;
    action.read(event, line, parameters);
    return event;
}
}

std::vector<Event> parseEvents(std::istream& text, const std::string& name,
                               const std::vector<ParameterInfo>& parameters)
{
    std::vector<Event> events;
    std::string line;
    for (int number = 1; std::getline(text, line); ++number)
    {
        const std::string_view content = trimmed(std::string_view(line).substr(0, line.find('#')));
        if (content.empty())
            continue;
        try
        {
            const Event event = parseEvent(content, parameters);
            if (!events.empty() && event.sample < events.back().sample)
                throw ToolError("sample " + std::to_string(event.sample) + " stands behind sample " +
                                std::to_string(events.back().sample) + "; expected lines sorted by sample");
            events.push_back(event);
        }
        catch (const ToolError& error)
        {
            throw ToolError(printable(name) + ':' + std::to_string(number) + ": " + error.what());
        }
    }
    return events;
}

std::vector<Event> readEventsFile(const std::string& path, const std::vector<ParameterInfo>& parameters)
{
    std::istringstream stream;
    try
    {
        stream.str(readInputFile(path));
    }
    catch (const ToolError& reason)
    {
        throw cannotRead(path, reason);
    }
    return parseEvents(stream, path, parameters);
}
}
