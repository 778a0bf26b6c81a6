#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/Packing.h"
#include "support/Bytes.h"

#include <bit>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using Orbel::CPropertyManager;
using Orbel::ParameterProperty;

namespace
{
using Values = std::vector<float>;

std::string record(const std::string& id, float value, size_t size = 64)
{
    return padded(padded(id, 52) + littleWord(std::bit_cast<std::uint32_t>(value)), size);
}

std::string packed(const std::string& data)
{
    return Orbel::pack(data, data.size() + 1000).value();
}

// A chunk as other versions or hostile hands might write it: fields that are not set are right.
struct Chunk
{
    std::string data;
    std::uint32_t count = 1;
    std::uint32_t recordSize = 64;
    std::uint32_t rawSize = std::uint32_t(data.size());
    std::uint32_t storedSize = std::uint32_t(data.size());
    std::uint32_t compressed = 0;
    std::uint32_t version = 4096;
    std::uint32_t headerSize = 48;

    std::string bytes() const
    {
        std::string header = padded("ppCh", 20);
        for (const auto number : {headerSize, version, compressed, storedSize, rawSize, recordSize, count})
            header += littleWord(number);
        return header + data;
    }
};

class CPropertyManagerTest : public testing::Test
{
protected:
    CPropertyManagerTest()
    {
        int number = 0;
        for (const char* id : {"A", "P3Q", "LONGER"})
            create(id, 10 + number++);
    }

    ParameterProperty* create(const std::string& id, int parameterId)
    {
        Orbel::ParameterPropertySetup setup;
        setup.id = id;
        setup.maximum = 10.0f;
        setup.value = setup.defaultValue = 1.0f;
        setup.parameterId = parameterId;
        return manager.CreateProperty(&setup);
    }

    Values values() const
    {
        Values all;
        for (int i = 0; i < manager.getPropertyCount(); ++i)
            all.push_back(manager.getProperty(i)->getCurrentValue());
        return all;
    }

    // The values after loading into a manager whose values are all 1.
    Values loaded(const std::string& bytes, int suffix = -1)
    {
        manager.setAllParamsToDefault();
        const std::vector<char> exact(bytes.begin(), bytes.end()); // its own block: overruns show
        manager.setChunk(exact.data(), exact.size(), suffix, {}, nullptr);
        return values();
    }

    std::string saved()
    {
        char* chunk = nullptr;
        const unsigned long size = manager.getChunk(&chunk);
        return {chunk, size};
    }

    CPropertyManager manager;
    const Values untouched{1, 1, 1};
};
}

TEST_F(CPropertyManagerTest, WritesTheFormatToTheByte)
{
    manager.getProperty(1)->setValue(0.5f);
    char* chunk = nullptr;
    const unsigned long size = manager.getChunkFromList(&chunk, {manager.getProperty(1), nullptr});
    const auto stored = std::uint32_t(size - 48);
    EXPECT_EQ(std::string(chunk, 48), padded("ppCh", 20) + littleWord(48) + littleWord(4096) + littleWord(1) +
                                          littleWord(stored) + littleWord(128) + littleWord(64) +
                                          littleWord(2));
    std::string raw;
    ASSERT_TRUE(Orbel::unpack({chunk + 48, stored}, 128, raw));
    const std::string row = padded("P3Q", 52) + std::string("\0\0\0\x3f\0\0\0\0\0\0\x20\x41", 12);
    EXPECT_EQ(raw, padded(row, 128));
}

TEST_F(CPropertyManagerTest, LoadsWhatItSavedAndNothingOfATruncatedChunk)
{
    manager.getProperty(0)->setValue(2.5f);
    manager.getProperty(1)->setValue(0.0f);
    manager.getProperty(2)->setValue(9.0f);
    const std::string chunk = saved();
    EXPECT_EQ(loaded(chunk), Values({2.5f, 0, 9}));
    EXPECT_EQ(loaded("sixteen bytes ppC" + chunk + "more"), Values({2.5f, 0, 9}));
    for (size_t length = 0; length < chunk.size(); ++length)
        ASSERT_EQ(loaded(chunk.substr(0, length)), untouched) << length << " of " << chunk.size() << " bytes";
}

TEST_F(CPropertyManagerTest, EachRecordIsTakenOrPassedOverOnItsOwn)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto load = [&](const std::string& one, const std::string& two, std::uint32_t size = 64)
    { return loaded(Chunk{.data = one + two, .count = 2, .recordSize = size}.bytes()); };
    EXPECT_EQ(load(record("GONE", 5), record("LONGER", 3)), Values({1, 1, 3}));
    EXPECT_EQ(load(record("A", 1000), record("P3Q", -1000)), Values({10, 0, 1}));
    EXPECT_EQ(load(record("A", nan), record("P3Q", 2)), Values({1, 2, 1}));
    EXPECT_EQ(load(record("A", 2, 128), record("P3Q", 3, 128), 128), Values({2, 3, 1}));
}

TEST_F(CPropertyManagerTest, AnIdEndsAtTheEndOfItsField)
{
    create(std::string(52, 'x'), 30);
    EXPECT_EQ(loaded(Chunk{.data = record(std::string(52, 'x'), 4)}.bytes()), Values({1, 1, 1, 4}));
}

TEST_F(CPropertyManagerTest, AHeaderThatDoesNotHoldTogetherChangesNothing)
{
    const std::string data = record("A", 5) + record("P3Q", 6);
    const Chunk good{.data = data, .count = 2};
    ASSERT_EQ(loaded(good.bytes()), Values({5, 6, 1}));

    const Chunk goodPacked{.data = packed(data), .count = 2, .rawSize = 128, .compressed = 1};
    ASSERT_EQ(loaded(goodPacked.bytes()), Values({5, 6, 1}));
    Chunk longHeader = goodPacked;
    longHeader.headerSize = 52;
    longHeader.data.insert(0, "more");
    longHeader.storedSize = goodPacked.storedSize;
    EXPECT_EQ(loaded(longHeader.bytes()), Values({5, 6, 1}));

    const std::vector<std::pair<const char*, std::function<void(Chunk&)>>> faults = {
        {"no records", [](Chunk& c) { c.count = 0; }},
        {"version too high", [](Chunk& c) { c.version = 0x1000000; }},
        {"more records than data", [](Chunk& c) { c.count = 3; }},
        {"count that wraps 32 bits to the right size", [](Chunk& c) { c.count = (1u << 26) + 2; }},
        {"records too short for a value", [](Chunk& c) { c.recordSize = 32, c.count = 4; }},
        {"raw size too large", [](Chunk& c) { c.rawSize += 1; }},
        {"raw size over the limit", [](Chunk& c) { c.rawSize = (64u << 20) + 64, c.count = (1u << 20) + 1; }},
        {"stored size that wraps", [](Chunk& c) { c.storedSize = 0xffffffff; }},
    };
    for (const auto& [name, spoil] : faults)
        for (Chunk chunk : {good, goodPacked})
        {
            SCOPED_TRACE(name);
            spoil(chunk);
            EXPECT_EQ(loaded(chunk.bytes()), untouched);
        }

    const std::string one = record("A", 5);
    const std::vector<std::pair<const char*, Chunk>> chunks = {
        {"slack where records would be", {.data = one, .count = 3, .rawSize = 128}},
        {"a stream of too few bytes", {.data = packed(one), .count = 2, .rawSize = 128, .compressed = 1}},
        {"no stream", {.data = data, .count = 2, .compressed = 1}},
        {"a header without end",
         {.data = packed(data), .count = 2, .rawSize = 128, .compressed = 1, .headerSize = 0xffffffff}},
    };
    for (const auto& [name, chunk] : chunks)
        EXPECT_EQ(loaded(chunk.bytes()), untouched) << name;
}

TEST_F(CPropertyManagerTest, NothingIsUnpackedBeyond64MiB)
{
    for (const auto& [size, expected] :
         {std::pair{64u << 20, Values({5, 1, 1})}, {(64u << 20) + 1, untouched}})
    {
        const std::string one = packed(record("A", 5, size));
        const Chunk chunk{.data = one, .recordSize = size, .rawSize = size, .compressed = 1};
        EXPECT_EQ(loaded(chunk.bytes()), expected);
    }
}

TEST_F(CPropertyManagerTest, ASuffixStandsInForTheFirstNumberOfAnId)
{
    for (const char* id : {"P7Q", "Z0Z", "M7", "7"})
        create(id, 50);
    const auto hit = [&](const char* id)
    {
        const Values after = loaded(Chunk{.data = record(id, 5)}.bytes(), 7);
        std::string names;
        for (size_t i = 0; i < after.size(); ++i)
            if (after[i] == 5.0f)
                names += manager.getProperty(int(i))->getID();
        return names;
    };
    EXPECT_EQ(hit("P3Q"), "P7Q");
    EXPECT_EQ(hit("Z0Z"), "Z0Z"); // a 0 is no number
    EXPECT_EQ(hit("M-4"), "M7");  // the sign belongs to the number
    EXPECT_EQ(hit("00123"), "7");
    EXPECT_EQ(hit("P4"), "");
}
