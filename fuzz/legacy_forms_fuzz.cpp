// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a preset or bank of the older product, as they stand and cut or filled to the sizes of the raw
// forms. The results are stores of today with every value in its range, not more of them than the bytes can
// hold, and none of them is in an older form.
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/CPresetStore.h"
#include "Require.h"
#include "effect/parameters/DKS.h"
#include "presets/CPresetConverter_V2.h"
#include "presets/OlderChunks.h"

#include <algorithm>
#include <string>

namespace
{
constexpr size_t singleProgram = 184;
constexpr size_t rawSizes[] = {singleProgram, 6728, 6860};

void requireInRange(const Orbel::CPropertyManager& parameters)
{
    for (int i = 0; i < parameters.getPropertyCount(); ++i)
    {
        const Orbel::ParameterProperty& property = *parameters.getProperty(i);
        const float value = property.getCurrentValue();
        require(property.getMin() <= value && value <= property.getMax(), "a value is in its range");
    }
}

void requireStoreOfToday(char* data, long size)
{
    require(data && !OLDPRESET::isOldPresetOrBank(data, size), "a result is not in an older form");
    CPresetConverter_V2 again;
    again.setDataChunk(data, size);
    char* kept = nullptr;
    require(again.getNumPresets() == 1 && again.getChunkForPreset(0, &kept) == size &&
                std::equal(data, data + size, kept),
            "a result is kept as it stands");

    Orbel::CPresetStore store;
    store.setPresetID("QDT_DKS_PRESET");
    require(store.setPreset(data, size) == 0, "a result is taken as a preset");
    require(!store.getString("TEMPO").empty(), "a result has a tempo");
    char* chunk = nullptr;
    const long length = store.getChunk("PPDATA", &chunk);
    require(length > 0, "a result has parameters");
    static Orbel::CPropertyManager parameters; // making it takes longer than all the rest
    for (const Orbel::ParameterPropertySetup& row : DKS::ps_plain)
        parameters.CreateProperty(&row);
    parameters.setChunkWithLoadSuffix(chunk, size_t(length), -1);
    requireInRange(parameters);
}

int mostPresetsOf(const std::string& bytes)
{
    const auto size = long(bytes.size());
    if (std::find(std::begin(rawSizes), std::end(rawSizes), bytes.size()) != std::end(rawSizes))
        return bytes.size() == singleProgram ? 1 : 32;
    if (OLDPRESET::isOldBank(bytes.data(), size))
        return int(std::min(bytes.size() / OLDPRESET::entry::records, size_t(OLDPRESET::kMostPresets)));
    return 1;
}

void convert(const std::string& bytes)
{
    if (!OLDPRESET::isOldPresetOrBank(bytes.data(), long(bytes.size())))
        return;
    CPresetConverter_V2 converter;
    converter.setDataChunk(bytes.data(), long(bytes.size()));
    require(converter.getNumPresets() <= mostPresetsOf(bytes), "no more presets than there is data for");
    for (int i = 0; i < converter.getNumPresets(); ++i)
    {
        char* data = nullptr;
        const long size = converter.getChunkForPreset(i, &data);
        requireStoreOfToday(data, size);
    }
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    std::string bytes(reinterpret_cast<const char*>(data), size);
    convert(bytes);
    for (const std::string_view id : {OLDPRESET::chunk::id, OLDPRESET::bank::id})
        if (size >= id.size())
            convert(bytes.replace(0, id.size(), id));
    bytes.resize(std::upper_bound(std::begin(rawSizes) + 1, std::end(rawSizes), size)[-1]);
    convert(bytes);
    return 0;
}
