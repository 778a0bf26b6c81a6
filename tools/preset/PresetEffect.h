// SPDX-License-Identifier: GPL-3.0-or-later
// An effect of its own for looking at a preset: what it makes of it is what the preset holds.
#pragma once

#include "tools/preset/PresetFile.h"

#include <memory>
#include <string>
#include <vector>

class CQDT_DKS_Single;

namespace Orbel
{
class OrbelOS;
}

namespace lodex
{
struct PresetContent
{
    struct Parameter
    {
        std::string id;
        float value; // in the parameter's own unit
        std::string text;
    };

    std::string name; // any bytes but NUL
    float timeBase;   // beats
    std::vector<Parameter> parameters;
};

class PresetEffect
{
public:
    // The texts of times will be for 128 beats a minute, which the values are stored for, too.
    PresetEffect();
    ~PresetEffect();

    // A preset of the file that can be used.
    void load(const PresetFile& file, size_t index, PresetType taken);
    PresetContent content();
    // A current program file of what is loaded. name is the file's base name.
    std::string programFile(const std::string& name);

private:
    std::string presetChunk();

    std::unique_ptr<Orbel::OrbelOS> effect;
    CQDT_DKS_Single& product; // the same effect, with what it has beyond the contract
};
}
