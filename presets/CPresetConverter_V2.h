// SPDX-License-Identifier: GPL-3.0-or-later
// Turns any older form of a preset or bank (OLDPRESET.h) into stores of today, and keeps them.
#pragma once

#include "Orbel/storage/Diagnosis.h"
#include "presets/CPresetConverterCallback.h"
#include "presets/OLDPRESET.h"

#include <vector>

// [window thread] [worker]  One thread at a time.
class CPresetConverter_V2 final : public CPresetConverterCallback
{
public:
    // Converts what is in an older form, by way of the tagged one if it is a raw form, and keeps a copy of
    // anything else as it stands, in the place that setProgram said (0 at first). data is not changed.
    void setDataChunk(const char* data, long size) override;
    // The same with a diagnosis of the older form.
    Orbel::Diagnosis convert(const char* data, long size);
    // What is kept beyond OLDPRESET::kMostPresets, or below 0, is dropped.
    void setProgram(int index) override { currentProgram = index; }
    void setCurrentPresetIndex(int index) override { currentPreset = index; }

    int getNumPresets() const { return int(presets.size()); }
    // The store's size, or 0 with null for an index that has none. The bytes stay the converter's; reading
    // them as a store changes them.
    long getChunkForPreset(int index, char** data);
    int getCurrentPresetIndex() const { return currentPreset; }

private:
    using CChunkData = std::vector<char>;

    void keep(const char* data, long size);

    int currentProgram = 0;
    int currentPreset = 0;
    std::vector<CChunkData> presets;
};
