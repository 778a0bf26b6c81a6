// SPDX-License-Identifier: GPL-3.0-or-later
// What a preset's file or a host's project holds of the effect, and its way to bytes and back: a store of the
// chunks that StateLayout.h names. Effect, command and packer write and read it here.
#pragma once

#include "Orbel/storage/CPresetStore.h"
#include "Orbel/storage/ParameterChunk.h"

#include <string>
#include <string_view>

// [window thread] [worker]  A plain value.
struct SavedState
{
    std::string name;
    Orbel::ParameterChunk parameters;
    Orbel::ParameterChunk systemSettings; // empty: this is a preset, and not a host's state
    float timeBase = 1.0f;                // beats from trigger to trigger

    // Writes into the store, in place of what was there. The size of the bytes, which stay the store's.
    long write(Orbel::CPresetStore& store, char** bytes) const;
    // The same into a store of its own.
    std::string bytes() const;

    // Reads data into the store and takes the state out of it; data is not changed. Where the data has no
    // name, the name that the store had before counts. Data that is refused leaves only that name; otherwise
    // the state holds what could be read. A time base that is missing or not a length counts as 1.
    //
    // The diagnosis names the first fault, including a value that is not a number.
    Orbel::Diagnosis read(Orbel::CPresetStore& store, std::string_view data,
                          Orbel::UnpackingAllowance& allowance);
    Orbel::Diagnosis read(Orbel::CPresetStore& store, std::string_view data)
    {
        Orbel::UnpackingAllowance any;
        return read(store, data, any);
    }

    // Whether one of the values is of a parameter that the effect has today.
    bool isKnown() const;
};
