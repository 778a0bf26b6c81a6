// SPDX-License-Identifier: GPL-3.0-or-later
// Images of the older product's forms, put together field by field.
#pragma once

#include "support/Bytes.h"

#include <bit>
#include <vector>

namespace images
{
inline std::string littleFloat(float number)
{
    return littleWord(std::bit_cast<std::uint32_t>(number));
}

inline std::string bigFloat(float number)
{
    return bigWord(std::bit_cast<std::uint32_t>(number));
}

// Values and name of a raw program.
struct Program
{
    std::vector<float> values = std::vector<float>(37, 0.5f);
    std::string name = "Old %n name";
    bool bigEndian = false;

    std::string bytes() const
    {
        std::string out;
        for (float value : values)
            out += bigEndian ? bigFloat(value) : littleFloat(value);
        return out + padded(name, 28);
    }
};

inline std::string singleForm(const Program& program, float tempo)
{
    return "junk" + littleFloat(tempo) + program.bytes();
}

inline std::string record(const std::string& id, float value, float tempo, size_t size = 60)
{
    return padded(padded(id, 52) + bigFloat(value) + bigFloat(tempo), size, 'x');
}

// A tagged preset as the product or an attacker might write it.
struct TaggedPreset
{
    std::string records = record("HOLDTIME", 30, 100) + record("GONE", 5, 7) + record("STRENGTH", 0.25f, 90);
    std::uint32_t count = 3;
    std::uint32_t recordSize = 60;
    std::uint32_t version = 8192;
    std::uint32_t key = 0;
    std::string name = "07-Name";

    std::string bytes() const
    {
        return padded("QDTDKSCNK", 12) + bigWord(604) + bigWord(version) + padded(bigWord(key), 512, 'k') +
               bigWord(512) + bigWord(count) + bigWord(0) + bigWord(recordSize) + bigWord(0) +
               padded(name, 28) + padded("", 24) + records;
    }
};

inline std::string entry(const std::string& name, float strength, std::uint32_t version = 8192,
                         std::uint32_t count = 1)
{
    return "junk" + bigWord(version) + bigWord(count) + bigWord(60) + padded(name, 52) +
           record("STRENGTH", strength, 111);
}

constexpr std::uint32_t entrySize = 128;

inline std::string taggedBank(const std::string& entries, std::uint32_t count,
                              std::uint32_t stride = entrySize, std::uint32_t version = 8192,
                              std::uint32_t key = 0)
{
    return padded("QDTDKSBNK", 12) + bigWord(544) + bigWord(stride) + bigWord(version) +
           padded(bigWord(key), 512, 'k') + bigWord(count) + bigWord(9) + entries;
}
}
