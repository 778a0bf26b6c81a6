// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/CPresetStore.h"
#include "Orbel/storage/ParameterChunk.h"
#include "effect/parameters/DKS.h"
#include "presets/AProgram.h"
#include "presets/CPresetConverter_V2.h"
#include "presets/OlderImages.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace images;

namespace
{
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

// What a converted store says.
struct Preset
{
    std::string name, tempo;
    std::map<std::string, float> values;
};

Preset read(char* bytes, long size)
{
    Orbel::CPresetStore store;
    store.setPresetID("QDT_DKS_PRESET");
    EXPECT_EQ(store.setPreset(bytes, size), 0);
    char* data = nullptr;
    const long length = store.getChunk("PPDATA", &data);
    Orbel::ParameterChunk values;
    EXPECT_TRUE(values.read({data, size_t(length)}).isSound());
    EXPECT_EQ(values.size(), 45u);
    Preset result{store.getPresetName(), store.getString("TEMPO"), {}};
    for (size_t i = 0; i < values.size(); ++i)
        result.values[std::string(values.id(i))] = values.value(i);
    return result;
}

std::vector<Preset> convert(const std::string& bytes)
{
    const std::vector<char> exact(bytes.begin(),
                                  bytes.end()); // its own block, so that the sanitizer sees overruns
    CPresetConverter_V2 converter;
    converter.setDataChunk(exact.data(), long(exact.size()));
    EXPECT_EQ(std::string(exact.data(), exact.size()), bytes) << "the data was changed";
    EXPECT_EQ(converter.getCurrentPresetIndex(), 0);
    std::vector<Preset> presets;
    for (int i = 0; i < converter.getNumPresets(); ++i)
    {
        char* data = nullptr;
        const long size = converter.getChunkForPreset(i, &data);
        presets.push_back(read(data, size));
    }
    return presets;
}
}

TEST(CPresetConverter_V2, MapsEachStoredValueToItsRealOne)
{
    struct Case
    {
        int row;
        float stored, real;
    };
    const Case table[] = {
        {0, 1.0f, 22050.0f}, // 22500, beyond the range
        {1, 1.0f, 1.4125376f}, {1, 0.0f, 0.0039f},  {2, 0.25f, 75.0f},    {3, 0.25f, 125.0f},
        {3, 0.0f, 20.0f},      {4, 0.25f, 50.0f},   {5, 0.0f, 8.0f},      {5, 0.49f, 1.14f},
        {5, 0.5f, -1.0f},      {6, 1.0f, -8.0f},    {7, 0.25f, 0.25f},    {8, 0.25f, 200.0f},
        {8, 0.0f, 50.0f},      {9, 0.75f, 1.5f},    {10, 0.25f, 4500.0f}, {11, 0.625f, 5.0f},
        {11, 1.0f, 10.0f},     {12, 0.5f, 0.875f},  {13, 0.25f, 4500.0f}, {14, 0.375f, -5.0f},
        {15, 0.5f, 0.875f},    {16, 0.75f, 1.5f},   {17, 0.25f, 0.5f},    {18, 1.0f, 1.0f},
        {19, 0.25f, 75.0f},    {20, 0.25f, 125.0f}, {21, 0.25f, 50.0f},   {22, 0.25f, 4.5f},
        {23, 0.75f, -4.5f},    {24, 0.75f, 0.75f},  {25, 0.16f, 0.0f},    {25, 0.17f, 1.0f},
        {25, 0.5f, 2.0f},      {26, 1.0f, 2.0f},    {27, 0.25f, 0.25f},   {28, 0.75f, 0.75f},
    };
    for (const Case& each : table)
    {
        Program program;
        program.values[size_t(each.row)] = each.stored;
        const auto presets = convert(singleForm(program, 140.0f));
        ASSERT_EQ(presets.size(), 1u);
        EXPECT_FLOAT_EQ(presets[0].values.at(DKS::ps_plain[each.row].id), each.real) << each.row;
        EXPECT_EQ(presets[0].values.at("CLICKFILTER"), 0.25f); // no program holds it
        EXPECT_EQ(presets[0].name, "Old %n name");
        EXPECT_EQ(presets[0].tempo, "140.00000");
    }
}

TEST(CPresetConverter_V2, JudgesTheByteOrderOfAProgramByItsValues)
{
    Program program{.name = "abcdefgh"};
    for (size_t i = 0; i < 29; ++i)
        program.values[i] = float(i) / 28.0f;
    const auto plain = convert(singleForm(program, 0.0f)).at(0);
    program.bigEndian = true;
    const auto twin = convert(singleForm(program, 0.0f)).at(0);
    EXPECT_EQ(twin.values, plain.values);
    EXPECT_EQ(twin.name, "dcbahgfe");
    EXPECT_EQ(plain.tempo, "128.00000"); // 0 means 128
    EXPECT_EQ(twin.tempo, "128.00000");

    program.bigEndian = false;
    program.values[36] = 1e9f; // has no meaning, so doesn't count
    EXPECT_EQ(convert(singleForm(program, nan)).at(0).tempo, "10.00000");
}

TEST(CPresetConverter_V2, ReadsTheWholeOfARawBank)
{
    for (const size_t size : {6728u, 6860u})
    {
        std::string bytes = "QDTDKSBN"; // the size alone counts
        for (int i = 0; i < 32; ++i)
        {
            Program program{.name = "Number " + std::to_string(i), .bigEndian = i == 3};
            program.values[0] = 1.0f / 3.0f; // reversed, it is beyond 1
            program.values[7] = float(i) / 32.0f;
            bytes += program.bytes() + (size == 6860u ? littleFloat(float(100 + i)) : "");
        }
        const auto presets = convert(padded(bytes, size, '\x7f'));
        ASSERT_EQ(presets.size(), 32u);
        for (int i = 0; i < 32; ++i)
        {
            const Preset& preset = presets[size_t(i)];
            EXPECT_EQ(preset.values.at("STRENGTH"), float(i) / 32.0f) << i;
            EXPECT_EQ(preset.name == "Number " + std::to_string(i), i != 3) << i;
            EXPECT_EQ(preset.tempo, size == 6860u ? std::to_string(100 + i) + ".00000" : "128.00000");
        }
    }
}

TEST(CPresetConverter_V2, WritesTheTaggedFormToTheByte)
{
    AProgram program{};
    program.tempo = 99.0f;
    std::strcpy(program.name, "x");
    const std::string written = OLDPRESET::createNewTypeChunk(program);
    const TaggedPreset header{.records = "", .count = 29, .name = "x"};
    std::string expected = header.bytes();
    std::fill_n(expected.begin() + 20, 512, '\0');
    EXPECT_EQ(written.substr(0, 664), expected + record("SPLIT_FREQ", 0.0f, 99.0f));
    EXPECT_EQ(written.substr(604 + 28 * 60), padded(record("HIGHBANDVOL", 0.0f, 99.0f), 60 + 16 * 60));
    EXPECT_EQ(written.size(), 3304u);
}

TEST(CPresetConverter_V2, TakesOfATaggedChunkWhatIsWhole)
{
    struct Case
    {
        const char* what;
        TaggedPreset chunk;
        float hold = 30.0f, strength = 0.25f;
        const char* tempo = "90.00000";
        std::string name = "07-Name";
    };
    const std::string long28(28, 'n'), name27(27, 'n'), long52 = padded("HOLDTIME", 52, 'X');
    const Case table[] = {
        {"valid", {}},
        {"version too low", {.version = 8191}, 20, 1, "10.00000", ""},
        {"enciphered", {.key = 1}, 20, 1, "10.00000"},
        {"more records than are there", {.count = 0xffffffff}},
        {"larger records",
         {.records = record("HOLDTIME", 30, 1, 64) + record("STRENGTH", 0.25f, 90, 64), .recordSize = 64}},
        {"records of no size", {.count = 0xffffffff, .recordSize = 0}, 20, 1, "10.00000"},
        {"records that overlap", {.recordSize = 59}, 20, 1, "10.00000"},
        {"second record cut",
         {.records = record("HOLDTIME", 30, 50) + record("STRENGTH", 0, 0, 59), .count = 2},
         30,
         1,
         "50.00000"},
        {"id without an end", {.records = record(long52, 5, 50), .count = 1}, 20, 1, "10.00000"},
        {"no numbers", {.records = record("HOLDTIME", nan, nan), .count = 1}, 20, 1, "10.00000"},
        {"beyond the range", {.records = record("HOLDTIME", 1e30f, 0.5f), .count = 1}, 200, 1, "0.50000"},
        {"name without an end", {.name = long28}, 30, 0.25f, "90.00000", long28},
        {"name cut in a character", {.name = name27 + "\xC3\xA4"}, 30, 0.25f, "90.00000", name27},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(each.what);
        const auto presets = convert(each.chunk.bytes());
        ASSERT_EQ(presets.size(), 1u);
        EXPECT_EQ(presets[0].values.at("HOLDTIME"), each.hold);
        EXPECT_EQ(presets[0].values.at("STRENGTH"), each.strength);
        EXPECT_EQ(presets[0].tempo, each.tempo);
        EXPECT_EQ(presets[0].name, each.name);
    }
    const std::string whole = TaggedPreset{}.bytes();
    for (size_t size = 10; size < whole.size(); ++size)
        EXPECT_EQ(convert(whole.substr(0, size)).size(), size >= 604 || size == 184 ? 1u : 0u) << size;
}

TEST(CPresetConverter_V2, TakesOfATaggedBankTheEntriesThatAreWhole)
{
    const std::string name39(39, 'n');
    const std::string three = entry("One", 0.25f) + entry("Two", 0.5f) + entry("Three", 0.75f);
    struct Case
    {
        const char* what;
        std::string bytes;
        std::vector<float> strengths;
        const char* lastName = "";
    };
    const Case table[] = {
        {"valid", taggedBank(three, 3), {0.25f, 0.5f, 0.75f}, "Three"},
        {"millions declared", taggedBank(three, 0xffffffff), {0.25f, 0.5f, 0.75f}, "Three"},
        {"last one cut", taggedBank(three.substr(0, 3 * entrySize - 1), 3), {0.25f, 0.5f}, "Two"},
        {"an old entry keeps nothing of the one before",
         taggedBank(entry("One", 0.25f) + entry("x", 0, 8191), 2),
         {0.25f, 1.0f}},
        {"records beyond the entry",
         taggedBank(entry("One", 0.25f, 8192, 0xffffffff) + entry("Two", 0.5f), 2),
         {0.25f, 0.5f},
         "Two"},
        {"enciphered", taggedBank(three, 3, entrySize, 8192, 1), {1.0f, 1.0f, 1.0f}},
        {"name of 41 bytes", taggedBank(entry(name39 + "\xC3\xA4", 0.25f), 1), {0.25f}, name39.c_str()},
        {"stride too small", taggedBank(three, 3, 67), {}},
        {"stride of gigabytes", taggedBank(three, 1, 0x80000000), {}},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(each.what);
        const auto presets = convert(each.bytes);
        std::vector<float> strengths(presets.size());
        std::transform(presets.begin(), presets.end(), strengths.begin(),
                       [](const Preset& preset) { return preset.values.at("STRENGTH"); });
        EXPECT_EQ(strengths, each.strengths);
        EXPECT_EQ(presets.empty() ? "" : presets.back().name, each.lastName);
        EXPECT_EQ(presets.empty() ? 440.0f : presets.back().values.at("EQ1FREQ"), 440.0f)
            << "not its default";
    }
    CPresetConverter_V2 converter;
    const std::string huge = taggedBank(padded("", 340000), 5000, 68);
    converter.setDataChunk(huge.data(), long(huge.size()));
    EXPECT_EQ(converter.getNumPresets(), OLDPRESET::kMostPresets);
}
