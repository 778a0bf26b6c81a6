// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a file of presets, as the lodex command reads them. Either there is a reason of one readable
// line, or a preset that loads; what is converted from it is an undamaged file with the same parameters.
#include "Require.h"
#include "presets/StateLayout.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"
#include "tools/preset/PresetEffect.h"

#include <algorithm>
#include <bit>
#include <cmath>

using namespace lodex;

namespace
{
constexpr size_t presetsTried = 2; // of a bank

void requireReadable(const std::string& words)
{
    require(!words.empty() && words.size() < 300 && printable(words) == words, "a reason is one short line");
}

bool isKeptByPresets(size_t parameter)
{
    const auto& others = StateLayout::noPartOfASound;
    return std::find(others.begin(), others.end(), int(parameter)) == others.end();
}

void requireSameSound(const PresetContent& before, const PresetContent& after)
{
    require(before.parameters.size() == 15 && after.parameters.size() == 15, "all parameters are there");
    for (size_t i = 0; i < before.parameters.size(); ++i)
    {
        const float one = before.parameters[i].value, other = after.parameters[i].value;
        require(std::isfinite(one), "a value is a number");
        require(!isKeptByPresets(i) || std::bit_cast<unsigned>(one) == std::bit_cast<unsigned>(other),
                "a converted preset has the same values");
    }
}

void requireConvertible(const PresetFile& file, size_t index, PresetType taken)
{
    static PresetEffect effect, other;
    effect.load(file, index, taken);
    const PresetContent content = effect.content();
    const PresetFile converted = parsePresetFile(effect.programFile("name"));
    other.load(converted, 0, converted.type);
    requireSameSound(content, other.content());
    if (content.timeBase > 0.001f) // below, the file's eight decimals are few
        require(converted.problem.empty() && converted.type == PresetType::preset,
                "a converted preset is undamaged");
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
try
{
    const PresetFile file = parsePresetFile({reinterpret_cast<const char*>(data), size});
    if (!file.problem.empty())
        requireReadable(file.problem);
    size_t usable = 0;
    for (size_t i = 0; i < file.presets.size() && usable < presetsTried; ++i)
        if (!file.presets[i].chunk.empty())
        {
            ++usable;
            requireConvertible(file, i, size % 2 == 0 ? PresetType::state : PresetType::preset);
        }
    require(usable > 0, "a file that is not refused has a preset");
    return 0;
}
catch (const ToolError& reason)
{
    requireReadable(reason.what());
    return 0;
}
