// SPDX-License-Identifier: GPL-3.0-or-later
// A bank of presets: a store in which each preset is a chunk of its own, itself a store. Counts and numbers
// are untrusted input; presets are given out as they stand.
#pragma once

#include "Orbel/storage/CPresetStore.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// [window thread] [worker]  One thread at a time. What is answered stays good until the bank reads again.
class SavedBank
{
public:
    SavedBank();

    // Reads data, which is not changed. A bank that is refused is empty.
    Orbel::Diagnosis read(std::string_view data, Orbel::UnpackingAllowance& allowance);
    Orbel::Diagnosis read(std::string_view data)
    {
        Orbel::UnpackingAllowance any;
        return read(data, any);
    }

    // How many presets it says that it has; any number. Nothing if it does not say.
    std::optional<long> getDeclaredCount() const;
    // The number of its current preset; 0 if it does not say. There need not be one of that number.
    long getCurrent() const;
    // The store of a preset, by its number from 0. Its data is null if there is none of that number.
    std::string_view getPreset(long number) const;
    // A chunk of parameters; empty if there is none.
    std::string_view getSystemSettings() const;

    // A bank of these presets, the first being the current one, as bytes. Settings that are empty are left
    // out.
    static std::string bytes(const std::vector<std::string>& presets, std::string_view systemSettings = {});

private:
    std::string_view chunk(const std::string& name) const;

    Orbel::CPresetStore store;
};
