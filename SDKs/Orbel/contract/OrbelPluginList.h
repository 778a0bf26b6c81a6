// SPDX-License-Identifier: GPL-3.0-or-later
// The list of a bundle's effects: one description for each.
#pragma once

#include <memory>
#include <vector>

namespace Orbel
{
struct OrbelFX_Description
{
    enum Type : long
    {
        effect = 1000,
        effectWithMidi = 1001,
        instrument = 1002
    };

    // Four characters and four zero bytes. As one 64-bit word the first character is the lowest byte.
    char id[8];
    const char* name;
    const char* product;
    const char* vendor;
    int numStereoInputs;
    int numStereoOutputs;
    int numPrograms;
    const char* versionString;
    long type; // a Type
    bool sidechainFlag;
    long version; // 0xMMMMmp: 0x30004 is 3.0.4
    long midiChannels;

    unsigned long idAsWord() const;
};

// A list of descriptions that owns its copies: a reference to an entry stays good while the list grows.
class OrbelPluginList
{
public:
    OrbelPluginList() = default;
    OrbelPluginList(const OrbelPluginList& other);
    OrbelPluginList& operator=(const OrbelPluginList& other);

    void push_back(const OrbelFX_Description& description);
    OrbelFX_Description& operator[](int index) { return *entries[size_t(index)]; }
    int getCount() const { return int(entries.size()); }

private:
    std::vector<std::unique_ptr<OrbelFX_Description>> entries;
};
}
