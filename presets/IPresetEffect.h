// SPDX-License-Identifier: GPL-3.0-or-later
// What the library of presets asks of the effect whose presets it keeps. The effect implements it.
#pragma once

// [window thread]
class IPresetEffect
{
public:
    // What the next chunk is for: 1 a preset's file, 0 the host's project.
    virtual void setPresetType(int type) = 0;
    // The state as a store: its size. The bytes stay the effect's, until its next call.
    virtual long getDataChunk(char** out) = 0;
    // Loads a state; the bytes may be changed.
    virtual void setDataChunk(char* data, long size) = 0;
    virtual void setPresetName(const char* name) = 0;

protected:
    ~IPresetEffect() = default;
};
