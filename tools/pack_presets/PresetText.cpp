// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/pack_presets/PresetText.h"

#include "Orbel/parameters/ParameterText.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/StateLayout.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>

namespace lodex
{
namespace
{
constexpr std::string_view blanks = " \t\r";
constexpr std::string_view nameKey = "name";
constexpr std::string_view aboutKey = "about";
constexpr std::string_view timeBaseKey = "time base";
constexpr size_t longestName = 28; // what hosts show of a program's name

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(blanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string inQuotes(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

std::string shortest(float number)
{
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

bool isPrintable(char c)
{
    return c >= ' ' && c <= '~';
}

// Takes a text in line by line. What it throws has the line in front.
class Reader
{
public:
    explicit Reader(const std::string& of) : file(of) {}

    PresetText read(std::istream& text)
    {
        for (std::string content; std::getline(text, content);)
        {
            ++line;
            takeLine(trimmed(std::string_view(content).substr(0, content.find('#'))));
        }
        for (std::string_view key : {nameKey, aboutKey, timeBaseKey})
            if (!seen.contains(key))
                refuse("the text ends without its " + inQuotes(key));
        return preset;
    }

private:
    [[noreturn]] void refuse(const std::string& reason) const
    {
        throw PresetTextError(file + ':' + std::to_string(line) + ": " + reason);
    }

    void takeLine(std::string_view content)
    {
        if (content.empty())
            return;
        const size_t sign = content.find('=');
        if (sign == content.npos)
            refuse("expected KEY = VALUE, not " + inQuotes(content));
        const std::string_view key = trimmed(content.substr(0, sign));
        const std::string_view value = trimmed(content.substr(sign + 1));
        if (!seen.emplace(key).second)
            refuse(inQuotes(key) + " stands here for the second time");
        if (value.empty())
            refuse(inQuotes(key) + " has no value");
        takeEntry(key, value);
    }

    void takeEntry(std::string_view key, std::string_view value)
    {
        if (key == nameKey)
            preset.name = checkedName(value);
        else if (key == aboutKey)
            preset.about = value;
        else if (key == timeBaseKey)
            preset.timeBase = timeBaseCalled(value);
        else
            preset.values.push_back(parameterValue(key, value));
    }

    std::string checkedName(std::string_view text) const
    {
        std::string name(text);
        if (name.size() > longestName)
            refuse("a name has at most " + std::to_string(longestName) + " characters, not " +
                   std::to_string(name.size()));
        if (!std::all_of(name.begin(), name.end(), isPrintable) || name.find_first_of("/\\") != name.npos)
            refuse("a name has plain characters only, and neither \"/\" nor \"\\\", as a file is named after "
                   "it");
        if (Orbel::removeFirstDigits(name.c_str()) != name)
            refuse("a name has no number in front: browsers take it off");
        return name;
    }

    int timeBaseCalled(std::string_view name) const
    {
        std::string names;
        for (int i = 0; i < gNumTimeAdjustEntries; ++i)
        {
            if (name == gTimeAdjustText[i])
                return i;
            names += std::string(i ? ", " : "") + gTimeAdjustText[i];
        }
        refuse("no time base " + inQuotes(name) + "; there are " + names);
    }

    PresetText::Value parameterValue(std::string_view id, std::string_view text) const
    {
        const auto* const row =
            std::find_if(std::begin(DKS_Mini::ps_plain), std::end(DKS_Mini::ps_plain),
                         [&](const Orbel::ParameterPropertySetup& each) { return each.id == id; });
        if (row == std::end(DKS_Mini::ps_plain))
            refuse("no parameter is called " + inQuotes(id));
        const auto& others = StateLayout::noPartOfASound; // no preset brings them
        if (std::find(others.begin(), others.end(), row->parameterId) != others.end())
            refuse(row->id + " is no part of a sound: loading a preset leaves it as it is");

        float value = 0.0f;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        const bool inRange = value >= row->minimum && value <= row->maximum; // false for a NaN
        if (error != std::errc() || stop != end || !inRange)
            refuse(row->id + " takes a number from " + shortest(row->minimum) + " to " +
                   shortest(row->maximum) + ", not " + inQuotes(text));
        return {row->parameterId, value};
    }

    const std::string& file;
    int line = 0;
    PresetText preset;
    std::set<std::string, std::less<>> seen; // keys
};

// "01-" for the first.
std::string prefixOf(size_t index)
{
    const std::string number = std::to_string(index + 1);
    return (number.size() < 2 ? "0" : "") + number + '-';
}
}

PresetText parsePresetText(std::istream& text, const std::string& file)
{
    return Reader(file).read(text);
}

PresetText readPresetText(const std::string& path)
{
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) // a folder opens, and then can't be read
        throw PresetTextError(path + ": cannot be read: " + (errno ? std::strerror(errno) : "it is empty"));
    return parsePresetText(file, path);
}

std::vector<PresetText> readBankFiles(const std::vector<std::string>& paths)
{
    std::vector<PresetText> presets;
    std::set<std::string> names;
    for (const std::string& path : paths)
    {
        const std::string prefix = prefixOf(presets.size());
        if (!std::filesystem::path(path).filename().string().starts_with(prefix))
            throw PresetTextError(path + ": the name of the next preset's file begins with " +
                                  inQuotes(prefix));
        presets.push_back(readPresetText(path));
        if (!names.insert(presets.back().name).second)
            throw PresetTextError(path + ": another preset is called " + inQuotes(presets.back().name));
    }
    return presets;
}
}
