// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/CPresetConverter_V2.h"

#include "CORE/ForeignData.h"
#include "presets/AProgram.h"

// Called again with each result, until that is a store. A raw form gives a tagged chunk, and a tagged chunk
// gives a store. A store begins with another id and, with 45 parameters in it, has none of the raw sizes, so
// that the recursion ends there.
void CPresetConverter_V2::setDataChunk(const char* data, long size)
{
    convert(data, size);
}

Orbel::Diagnosis CPresetConverter_V2::convert(const char* data, long size)
{
    if (!data || size <= 0)
        return Orbel::refused(0, "it is empty");
    if (OLDPRESET::isRawForm(size))
    {
        OLDPRESET::setChunkOld(data, int(size), size == OLDPRESET::kSingleProgramSize, this);
        return {};
    }
    if (OLDPRESET::isOldBank(data, size))
        return OLDPRESET::convertBankChunk_v2(data, size, this);
    if (OLDPRESET::isOldPreset(data, size))
        return OLDPRESET::convertPresetChunk_v2(data, size, this);
    keep(data, size);
    return {};
}

void CPresetConverter_V2::keep(const char* data, long size)
{
    if (currentProgram < 0 || currentProgram >= OLDPRESET::kMostPresets ||
        std::uint64_t(size) > Core::kLargestForeignSize)
        return;
    const auto place = size_t(currentProgram);
    if (presets.size() <= place)
        presets.resize(place + 1);
    presets[place].assign(data, data + size);
}

long CPresetConverter_V2::getChunkForPreset(int index, char** data)
{
    *data = nullptr;
    if (index < 0 || index >= getNumPresets())
        return 0;
    CChunkData& chunk = presets[size_t(index)];
    *data = chunk.empty() ? nullptr : chunk.data();
    return long(chunk.size());
}
