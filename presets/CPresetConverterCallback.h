// SPDX-License-Identifier: GPL-3.0-or-later
// Where the presets that a conversion makes arrive, one after another.
#pragma once

// [window thread] [worker]  Called on the thread that converts.
class CPresetConverterCallback
{
public:
    // The place in its bank of the preset that comes next. Not called for a single preset.
    virtual void setProgram(int index) = 0;
    // A preset, as the current form or as an older one in between. The bytes are valid during the call.
    virtual void setDataChunk(const char* data, long size) = 0;
    virtual void setCurrentPresetIndex(int index) = 0;

protected:
    ~CPresetConverterCallback() = default;
};
