// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/RenderEngine.h"

#include "tools/common/Text.h"
#include "tools/common/ToolError.h"
#include "tools/render/EffectEngine.h"
#include "tools/render/VST3Engine.h"

#include <algorithm>

namespace lodex
{
namespace
{
struct EngineKind
{
    const char* name;
    std::unique_ptr<RenderEngine> (*create)();
};

constexpr EngineKind engineKinds[] = {
    {"effect", [] { return std::unique_ptr<RenderEngine>(std::make_unique<EffectEngine>()); }},
    {"vst3", [] { return std::unique_ptr<RenderEngine>(std::make_unique<VST3Engine>()); }},
};
}

std::unique_ptr<RenderEngine> createRenderEngine(std::string_view name)
{
    std::string names;
    for (const EngineKind& kind : engineKinds)
    {
        if (name == kind.name)
            return kind.create();
        names += (names.empty() ? "" : ", ") + std::string(kind.name);
    }
    throw ToolError("no engine " + inQuotes(name) + "; this build has " + names);
}

static int indexOf(const std::vector<ParameterInfo>& parameters, std::string_view id)
{
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const ParameterInfo& each) { return each.id == id; });
    if (found != parameters.end())
        return int(found - parameters.begin());
    std::string ids;
    for (const ParameterInfo& each : parameters)
        ids += (ids.empty() ? "" : ", ") + each.id;
    throw ToolError("no parameter " + inQuotes(id) + "; there are " + ids);
}

ParameterValue resolveSet(const std::vector<ParameterInfo>& parameters, std::string_view id,
                          std::string_view value)
{
    const int index = indexOf(parameters, id);
    const ParameterInfo& parameter = parameters[size_t(index)];
    const auto number = parseNumber(value);
    const float single = number ? float(*number) : 0.0f; // because the bounds are single, too
    if (!number || single < parameter.minimum || single > parameter.maximum)
        throw ToolError(parameter.id + " takes a number from " + formatNumber(parameter.minimum) + " to " +
                        formatNumber(parameter.maximum) + ", not " + inQuotes(value));
    return {index, single};
}
}
