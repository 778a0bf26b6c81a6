#include "Orbel/Bytes.h"
#include "Orbel/CPresetStore.h"
#include "Orbel/CPropertyManager.h"
#include "parameters/DKS.h"
#include "presets/AProgram.h"
#include "presets/CPresetConverter_V2.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace
{
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

std::string littleFloat(float number)
{
    return littleWord(std::bit_cast<std::uint32_t>(number));
}

std::string bigFloat(float number)
{
    return bigWord(std::bit_cast<std::uint32_t>(number));
}

// What a converted store says.
struct Preset
{
    std::string name, tempo;
    std::map<std::string, float> values;
};

Preset read(char* store, long size)
{
    Orbel::CPresetStore preset;
    preset.setPresetID("QDT_DKS_PRESET");
    EXPECT_EQ(preset.setPreset(store, size), 0);
    Preset result{preset.getPresetName(), preset.getString("TEMPO"), {}};
    Orbel::CPropertyManager parameters;
    for (const auto& row : DKS::ps_plain)
        parameters.CreateProperty(&row)->setValue(row.maximum);
    char* data = nullptr;
    const long length = preset.getChunk("PPDATA", &data);
    parameters.setChunkWithLoadSuffix(data, size_t(length), -1);
    for (const auto& row : DKS::ps_plain)
        result.values[row.id] = parameters.getProperty(row.id.c_str())->getCurrentValue();
    return result;
}

std::vector<Preset> convert(const std::string& bytes)
{
    const std::vector<char> exact(bytes.begin(), bytes.end()); // its own block: overruns show
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

// Values, name and perhaps tempo of a raw program.
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

std::string singleForm(const Program& program, float tempo)
{
    return "junk" + littleFloat(tempo) + program.bytes();
}

std::string record(const std::string& id, float value, float tempo, size_t size = 60)
{
    return padded(padded(id, 52) + bigFloat(value) + bigFloat(tempo), size, 'x');
}

// A tagged chunk as the product or hostile hands wrote it.
struct Chunk
{
    std::string records = record("HOLDTIME", 30, 100) + record("GONE", 5, 7) + record("STRENGTH", 0.25f, 90);
    std::uint32_t count = 3;
    std::uint32_t recordSize = 60;
    std::uint32_t version = 8192;
    std::uint32_t key = 0;
    std::string name = "07-Name";
    std::uint32_t headerSize = 604;

    std::string bytes() const
    {
        return padded("QDTDKSCNK", 12) + bigWord(headerSize) + bigWord(version) +
               padded(bigWord(key), 512, 'k') + bigWord(512) + bigWord(count) + bigWord(0) +
               bigWord(recordSize) + bigWord(0) + padded(name, 28) + padded("", 24) + records;
    }
};

std::string entry(const std::string& name, float strength, std::uint32_t version = 8192,
                  std::uint32_t count = 1)
{
    return "junk" + bigWord(version) + bigWord(count) + bigWord(60) + padded(name, 52) +
           record("STRENGTH", strength, 111);
}

constexpr std::uint32_t entrySize = 128;

std::string bank(const std::string& entries, std::uint32_t count, std::uint32_t stride = entrySize,
                 std::uint32_t version = 8192, std::uint32_t key = 0)
{
    return padded("QDTDKSBNK", 12) + bigWord(544) + bigWord(stride) + bigWord(version) +
           padded(bigWord(key), 512, 'k') + bigWord(count) + bigWord(9) + entries;
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
        {0, 0.25f, 5625.0f}, {1, 1.0f, 1.4125376f}, {1, 0.0f, 0.0039f},  {2, 0.25f, 75.0f},
        {3, 0.25f, 125.0f},  {3, 0.0f, 20.0f},      {4, 0.25f, 50.0f},   {5, 0.0f, 8.0f},
        {5, 0.49f, 1.14f},   {5, 0.5f, -1.0f},      {6, 1.0f, -8.0f},    {7, 0.25f, 0.25f},
        {8, 0.25f, 200.0f},  {8, 0.0f, 50.0f},      {9, 0.75f, 1.5f},    {10, 0.25f, 4500.0f},
        {11, 0.625f, 5.0f},  {11, 1.0f, 10.0f},     {12, 0.5f, 0.875f},  {13, 0.25f, 4500.0f},
        {14, 0.375f, -5.0f}, {15, 0.5f, 0.875f},    {16, 0.75f, 1.5f},   {17, 0.25f, 0.5f},
        {18, 1.0f, 1.0f},    {19, 0.25f, 75.0f},    {20, 0.25f, 125.0f}, {21, 0.25f, 50.0f},
        {22, 0.25f, 4.5f},   {23, 0.75f, -4.5f},    {24, 0.75f, 0.75f},  {25, 0.16f, 0.0f},
        {25, 0.17f, 1.0f},   {25, 0.5f, 2.0f},      {26, 1.0f, 2.0f},    {27, 0.25f, 0.25f},
        {28, 0.75f, 0.75f},
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
    EXPECT_EQ(plain.tempo, "128.00000"); // 0 stands for it
    EXPECT_EQ(twin.tempo, "128.00000");

    program.bigEndian = false;
    program.values[36] = 1e9f; // has no meaning, so doesn't count
    EXPECT_EQ(convert(singleForm(program, nan)).at(0).tempo, "10.00000");
    EXPECT_EQ(convert(singleForm(program, 1.0f)).at(0).name, "abcdefgh");
    program.values.assign(37, std::bit_cast<float>(0xffffffffu)); // no number in either order
    EXPECT_EQ(convert(singleForm(program, 1.0f)).at(0).values.at("EQ1FREQ"), 440.0f)
        << "its value at creation";
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

TEST(CPresetConverter_V2, KnowsOlderFormsBySizeOrByTheirWholeId)
{
    const auto isOlder = [](const std::string& bytes)
    { return OLDPRESET::isOldPresetOrBank(bytes.data(), long(bytes.size())); };
    for (const size_t size : {184u, 6728u, 6860u})
    {
        EXPECT_TRUE(isOlder(padded("QDT_DKS_BANK", size)));
        EXPECT_FALSE(isOlder(padded("", size - 1)) || isOlder(padded("", size + 1)));
    }
    EXPECT_TRUE(isOlder(padded("QDTDKSCNK", 10)) && isOlder(padded("QDTDKSBNK", 100)));
    for (const char* id : {"QDTDKSCNK", "QDTDKSBN", "QDTDKSCNKS", "QDT_DKS_BANK", ""})
        EXPECT_FALSE(isOlder(id)) << id;
    EXPECT_FALSE(OLDPRESET::isOldPresetOrBank(nullptr, 184));
    EXPECT_EQ(convert(padded("QDTDKSBNK", 184)).size(), 1u) << "a program whatever it holds";
}

TEST(CPresetConverter_V2, WritesTheTaggedFormToTheByte)
{
    AProgram program{};
    program.tempo = 99.0f;
    std::strcpy(program.name, "x");
    const std::string written = OLDPRESET::createNewTypeChunk(program);
    const Chunk header{.records = "", .count = 29, .name = "x"};
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
        Chunk chunk;
        float hold = 30.0f, strength = 0.25f;
        const char* tempo = "90.00000";
        std::string name = "07-Name";
    };
    const std::string long28(28, 'n'), long52 = padded("HOLDTIME", 52, 'X');
    const Case table[] = {
        {"valid", {}},
        {"header size is not used", {.headerSize = 0xffffffff}},
        {"version too low", {.version = 8191}, 20, 1, "10.00000", ""},
        {"enciphered", {.key = 1}, 20, 1, "10.00000"},
        {"more records than are there", {.count = 0xffffffff}},
        {"larger records",
         {.records = record("HOLDTIME", 30, 1, 64) + record("STRENGTH", 0.25f, 90, 64), .recordSize = 64}},
        {"records of no size", {.count = 0xffffffff, .recordSize = 0}, 20, 1, "10.00000"},
        {"records that overlap", {.recordSize = 59}, 20, 1, "10.00000"},
        {"records of gigabytes", {.recordSize = 0xffffffff}, 30, 1, "100.00000"},
        {"second record cut",
         {.records = record("HOLDTIME", 30, 50) + record("STRENGTH", 0, 0, 59), .count = 2},
         30,
         1,
         "50.00000"},
        {"id without an end", {.records = record(long52, 5, 50), .count = 1}, 20, 1, "10.00000"},
        {"no numbers", {.records = record("HOLDTIME", nan, nan), .count = 1}, 20, 1, "10.00000"},
        {"beyond the range", {.records = record("HOLDTIME", 1e30f, 0.5f), .count = 1}, 200, 1, "0.50000"},
        {"name without an end", {.name = long28}, 30, 0.25f, "90.00000", long28},
        {"name empty", {.name = ""}, 30, 0.25f, "90.00000", "NoName"},
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
    const std::string whole = Chunk{}.bytes();
    for (size_t size = 10; size < whole.size(); ++size)
        EXPECT_EQ(convert(whole.substr(0, size)).size(), size >= 604 || size == 184 ? 1u : 0u) << size;
}

TEST(CPresetConverter_V2, TakesOfATaggedBankTheEntriesThatAreWhole)
{
    const std::string three = entry("One", 0.25f) + entry("Two", 0.5f) + entry("Three", 0.75f);
    struct Case
    {
        const char* what;
        std::string bytes;
        std::vector<float> strengths;
        const char* lastName = "";
    };
    const Case table[] = {
        {"valid", bank(three, 3), {0.25f, 0.5f, 0.75f}, "Three"},
        {"millions declared", bank(three, 0xffffffff), {0.25f, 0.5f, 0.75f}, "Three"},
        {"last one cut", bank(three.substr(0, 3 * entrySize - 1), 3), {0.25f, 0.5f}, "Two"},
        {"an old entry keeps nothing of the one before",
         bank(entry("One", 0.25f) + entry("x", 0, 8191), 2),
         {0.25f, 1.0f}},
        {"records beyond the entry",
         bank(entry("One", 0.25f, 8192, 0xffffffff) + entry("Two", 0.5f), 2),
         {0.25f, 0.5f},
         "Two"},
        {"enciphered", bank(three, 3, entrySize, 8192, 1), {1.0f, 1.0f, 1.0f}},
        {"without a use for its key", bank(three, 3, entrySize, 8191, 1), {0.25f, 0.5f, 0.75f}, "Three"},
        {"entries without records", bank(three, 1, 68), {1.0f}, "One"},
        {"stride too small", bank(three, 3, 67), {}},
        {"no stride", bank(three, 0xffffffff, 0), {}},
        {"stride of gigabytes", bank(three, 1, 0x80000000), {}},
        {"header cut", bank(three, 3).substr(0, 543), {}},
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
    const std::string huge = bank(padded("", 340000), 5000, 68);
    converter.setDataChunk(huge.data(), long(huge.size()));
    EXPECT_EQ(converter.getNumPresets(), OLDPRESET::kMostPresets);
}

TEST(CPresetConverter_V2, KeepsAnythingElseAsItStands)
{
    CPresetConverter_V2 converter;
    converter.setProgram(2);
    converter.setDataChunk("store", 5);
    for (const int place : {-1, OLDPRESET::kMostPresets})
    {
        converter.setProgram(place);
        converter.setDataChunk("dropped", 7);
    }
    ASSERT_EQ(converter.getNumPresets(), 3);
    char* data = nullptr;
    ASSERT_EQ(converter.getChunkForPreset(2, &data), 5);
    EXPECT_EQ(std::string(data, 5), "store");
    for (const int index : {-1, 0, 3})
    {
        EXPECT_EQ(converter.getChunkForPreset(index, &data), 0);
        EXPECT_EQ(data, nullptr);
    }
}
