// SPDX-License-Identifier: GPL-3.0-or-later
// A factory preset as a text that people read and change; the factory bank is built from such texts.
//
//   # a comment, also after an entry
//   name = Four on the Floor
//   about = what it is for, in one line
//   time base = 1/4
//   HOLDTIME = 40
//
// The first three entries have to be there. The others are parameters by their id texts, with values in the
// parameter's own unit; a parameter that is not there has its default. No entry may stand twice.
//
// Read at build time, by pack_presets, and by tests.
#pragma once

#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

namespace lodex
{
struct PresetText
{
    struct Value
    {
        int parameter; // index in DKS_Mini::ps_plain
        float value;   // within the parameter's range
    };

    std::string name;  // of 1 to 28 characters that a file name can contain
    std::string about; // one line
    int timeBase = 0;  // index in gTimeAdjustText
    std::vector<Value> values;
};

// What is wrong with a text: "FILE:LINE: REASON", in one line for a person.
class PresetTextError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// file is the name of the text in errors.
PresetText parsePresetText(std::istream& text, const std::string& file);

PresetText readPresetText(const std::string& path);

// The texts of a bank: their names are distinct, and their files' names begin with "01-", "02-" and so on.
std::vector<PresetText> readBankFiles(const std::vector<std::string>& paths);
}
