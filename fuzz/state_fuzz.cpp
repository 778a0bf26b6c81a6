// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds an effect with a host's state or a preset, in any form that it takes.
//
// In any case every value is a number within its range, the time base is one, the name ends, and
// what is saved then loads to the same and saves to the same bytes.
#include "Require.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "effect/parameters/TimeAdjust.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

static std::string save(CQDT_DKS_Single& effect)
{
    char* chunk = nullptr;
    const long size = effect.getDataChunk(&chunk);
    require(chunk && size > 0, "there is a state");
    return {chunk, size_t(size)};
}

static void checkValues(CQDT_DKS_Single& effect)
{
    for (int id = 0; id < 15; ++id)
    {
        const Orbel::ParameterProperty& property = *effect.getParameterPropertyByID(id);
        const float value = property.getCurrentValue();
        require(std::isfinite(value) && value >= property.getMin() && value <= property.getMax(),
                "a value is in its range");
    }
    require(isTimeBase(effect.getTimeAdjust()), "the time base is one");
    char name[256];
    effect.getProgramName(name);
    require(std::strlen(name) <= 28, "a name has its end");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static CQDT_DKS_Single effect(nullptr);
    effect.setPresetType(size % 2 == 0 ? CQDT_DKS_Single::hostState : CQDT_DKS_Single::presetFile);
    std::string copy(reinterpret_cast<const char*>(data), size);
    effect.setDataChunk(copy.data(), long(copy.size()));
    checkValues(effect);

    effect.setPresetType(CQDT_DKS_Single::hostState);
    effect.setPresetName("Name"); // one that loading doesn't shorten
    std::string first = save(effect);
    effect.setDataChunk(first.data(), long(first.size()));
    std::string second = save(effect);
    effect.setDataChunk(second.data(), long(second.size()));
    require(save(effect) == second, "what is saved loads and saves to the same");
    return 0;
}
