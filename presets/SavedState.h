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

    // Reads data, which stays as it is, by way of the store, whose former name counts where the data has
    // none. If the data is refused, that name is all that there is; otherwise the state holds what could be
    // read of it. A time base that is missing or no length counts as 1.
    //
    // The diagnosis names the first fault, also one that lies in the values themselves.
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
