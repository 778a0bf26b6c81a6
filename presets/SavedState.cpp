// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/SavedState.h"

#include "CORE/Numbers.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/StateLayout.h"

#include <algorithm>
#include <cmath>

namespace
{
using Orbel::damaged;
using Orbel::Diagnosis;
using Orbel::ParameterChunk;

constexpr int timeBaseDecimals = 8;

void addParameters(Orbel::CPresetStore& store, const char* name, const ParameterChunk& values)
{
    const std::string chunk = values.bytes();
    if (!chunk.empty())
        store.addChunk(name, chunk.data(), long(chunk.size()));
}

std::string_view chunkOf(const Orbel::CPresetStore& store, const char* name)
{
    char* data = nullptr;
    const long size = store.getChunk(name, &data);
    return {data, size_t(size)};
}

bool isParameter(std::string_view id)
{
    return std::any_of(std::begin(DKS_Mini::ps_plain), std::end(DKS_Mini::ps_plain),
                       [&](const Orbel::ParameterPropertySetup& row) { return row.id == id; });
}

// Whether any value of one of today's parameters passes the test.
template <typename Test>
bool hasKnownValue(const ParameterChunk& values, Test&& fits)
{
    for (size_t i = 0; i < values.size(); ++i)
        if (fits(values.value(i)) && isParameter(values.id(i)))
            return true;
    return false;
}

Diagnosis readParameters(std::string_view data, const char* what, ParameterChunk& values,
                         Orbel::UnpackingAllowance& allowance)
{
    if (const Diagnosis found = values.read(data, allowance); !found.taken)
        return damaged(found.at, std::string("its chunk of ") + what + ": " + found.why);
    if (!hasKnownValue(values, [](float) { return true; }))
        return damaged(0, std::string("its ") + what + " are none of this effect");
    if (hasKnownValue(values, [](float value) { return std::isnan(value); }))
        return damaged(0, "a value in it is not a number");
    return {};
}

Diagnosis readTimeBase(const Orbel::CPresetStore& store, float& beats)
{
    const Sonvex::String text = store.getString(StateLayout::timeBaseChunk);
    const float number = text.empty() ? 1.0f : float(Core::parseDouble(text.c_str()));
    beats = isTimeBase(number) ? number : 1.0f;
    return isTimeBase(number) ? Diagnosis() : damaged(0, "its time base is " + Orbel::quoted(text));
}

void noteFirst(Diagnosis& first, const Diagnosis& next)
{
    if (first.isSound())
        first = next;
}
}

long SavedState::write(Orbel::CPresetStore& store, char** bytes) const
{
    store.clear();
    store.setPresetID(StateLayout::presetID);
    store.setPresetName(name.c_str());
    store.addString(StateLayout::nameChunk, name);
    addParameters(store, StateLayout::parameterChunk, parameters);
    if (!systemSettings.empty())
        addParameters(store, StateLayout::systemChunk, systemSettings);
    store.addString(StateLayout::timeBaseChunk, Core::formatFixed(timeBase, timeBaseDecimals));
    return store.getPreset(bytes);
}

std::string SavedState::bytes() const
{
    Orbel::CPresetStore store;
    char* data = nullptr;
    const long size = write(store, &data);
    return {data, size_t(size)};
}

Diagnosis SavedState::read(Orbel::CPresetStore& store, std::string_view data,
                           Orbel::UnpackingAllowance& allowance)
{
    *this = {};
    store.setPresetID(StateLayout::presetID);
    std::string copy(data); // reading changes it
    Diagnosis found = store.read(copy, allowance);
    name = store.getPresetName();
    if (!found.taken)
        return found;
    const auto values = chunkOf(store, StateLayout::parameterChunk);
    const auto system = chunkOf(store, StateLayout::systemChunk);
    noteFirst(found, values.empty() ? damaged(0, "it holds no parameters")
                                    : readParameters(values, "parameters", parameters, allowance));
    if (!system.empty())
        noteFirst(found, readParameters(system, "system settings", systemSettings, allowance));
    noteFirst(found, readTimeBase(store, timeBase));
    return found;
}

bool SavedState::isKnown() const
{
    return hasKnownValue(parameters, [](float) { return true; });
}
