// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/preset/PresetPrinting.h"

#include "tools/common/Text.h"
#include "tools/common/TimeBase.h"
#include "tools/preset/PresetEffect.h"

#include <cstdio>
#include <nlohmann/json.hpp>

namespace lodex
{
PresetContent contentOf(const PresetFile& file, size_t index, PresetType taken)
{
    PresetEffect effect; // a new one for each: what a preset does not tell has its default
    effect.load(file, index, taken);
    return effect.content();
}

namespace
{
using Json = nlohmann::ordered_json;

const char* kindOf(const PresetFile& file, PresetType taken)
{
    return file.isOlder ? "legacy" : taken == PresetType::preset ? "preset" : "state";
}

// The number with as few digits as the single-precision one needs.
double shortest(float value)
{
    return *parseNumber(formatNumber(value));
}

Json jsonOf(const PresetContent& content, const char* kind)
{
    Json parameters = Json::object(), texts = Json::object();
    for (const auto& each : content.parameters)
    {
        parameters[each.id] = shortest(each.value);
        texts[each.id] = each.text;
    }
    return {{"kind", kind},
            {"name", content.name},
            {"time_adjust", shortest(content.timeBase)},
            {"parameters", std::move(parameters)},
            {"texts", std::move(texts)}};
}

Json jsonOf(const PresetFile& file, PresetType taken)
{
    Json presets = Json::array();
    for (size_t i = 0; i < file.presets.size(); ++i)
    {
        if (file.presets[i].chunk.empty())
            presets.push_back({{"kind", "damaged"}, {"reason", file.presets[i].problem}});
        else
            presets.push_back(jsonOf(contentOf(file, i, taken), kindOf(file, taken)));
    }
    if (!file.isBank)
        return presets[0];
    return {{"kind", file.isOlder ? "legacy" : "bank"},
            {"current", file.current},
            {"presets", std::move(presets)}};
}

void printTable(const PresetContent& content, const char* kind)
{
    std::printf("%s %s, time base %s\n", kind, inQuotes(content.name).c_str(),
                nameOfTimeBase(content.timeBase).c_str());
    for (const auto& each : content.parameters)
        std::printf("  %-14s%10s   %s\n", each.id.c_str(), formatNumber(each.value).c_str(),
                    printable(each.text).c_str());
}

}

void printTables(const PresetFile& file, PresetType taken)
{
    if (file.isBank)
        std::printf("%sbank of %zu presets, the current one is %d\n", file.isOlder ? "legacy " : "",
                    file.presets.size(), file.current);
    for (size_t i = 0; i < file.presets.size(); ++i)
    {
        if (file.isBank)
            std::printf("\n%zu: ", i);
        if (file.presets[i].chunk.empty())
            std::printf("damaged: %s\n", printable(file.presets[i].problem).c_str());
        else
            printTable(contentOf(file, i, taken), kindOf(file, taken));
    }
}

void printJson(const PresetFile& file, PresetType taken)
{
    std::printf("%s\n", jsonOf(file, taken).dump(-1, ' ', true, Json::error_handler_t::replace).c_str());
}
}
