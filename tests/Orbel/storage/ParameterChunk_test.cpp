// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/ParameterChunk.h"
#include "support/Bytes.h"

#include <bit>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

using Orbel::ParameterChunk;

namespace
{
std::string record(const std::string& id, float value, size_t size = 64)
{
    return padded(padded(id, 52) + littleWord(std::bit_cast<std::uint32_t>(value)), size);
}

std::string packed(const std::string& data)
{
    return Orbel::pack(data, data.size() + 1000).value();
}

// A chunk as another version or an attacker might write it; fields that are not set are right.
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

// "A=5 B=6 ", or why it is refused and at which byte.
std::string read(const std::string& bytes)
{
    const std::vector<char> exact(bytes.begin(),
                                  bytes.end()); // its own block, so that the sanitizer sees overruns
    ParameterChunk chunk;
    const Orbel::Diagnosis found = chunk.read({exact.data(), exact.size()});
    EXPECT_EQ(found.taken, !chunk.empty());
    std::string text = found.taken ? found.why : std::to_string(found.at) + ": " + found.why;
    for (size_t i = 0; i < chunk.size(); ++i)
        text += std::string(chunk.id(i)) + "=" + std::to_string(int(chunk.value(i))) + " ";
    return text;
}

const std::string data = record("A", 5) + record("B", 6);
const Chunk good{.data = data, .count = 2};
const Chunk goodPacked{.data = packed(data), .count = 2, .rawSize = 128, .compressed = 1};
}

TEST(ParameterChunk, WritesTheFormatToTheByte)
{
    ParameterChunk chunk;
    chunk.append("P3Q", 0.5f, 0.0f, 10.0f);
    chunk.appendEmpty();
    chunk.append(std::string(60, 'x'), 0.0f, 0.0f, 0.0f);
    const std::string bytes = chunk.bytes();
    const auto stored = std::uint32_t(bytes.size() - 48);
    EXPECT_EQ(bytes.substr(0, 48), padded("ppCh", 20) + littleWord(48) + littleWord(4096) + littleWord(1) +
                                       littleWord(stored) + littleWord(192) + littleWord(64) + littleWord(3));
    std::string raw;
    ASSERT_TRUE(Orbel::unpack(bytes.substr(48), 192, raw));
    const std::string row = padded("P3Q", 52) + std::string("\0\0\0\x3f\0\0\0\0\0\0\x20\x41", 12);
    EXPECT_EQ(raw, padded(padded(row, 128) + std::string(51, 'x'), 192));
}

TEST(ParameterChunk, ReadsTheFirstChunkOfTheDataAsAWhole)
{
    EXPECT_EQ(read(good.bytes()), "A=5 B=6 ");
    EXPECT_EQ(read("sixteen bytes ppC" + goodPacked.bytes() + Chunk{.data = record("C", 7)}.bytes()),
              "A=5 B=6 ");
    EXPECT_EQ(read(Chunk{.data = data, .count = 2, .version = 0x1000000}.bytes() + good.bytes()),
              "24: its version is 16777216, and 16777215 is the highest known");
    EXPECT_EQ(read(Chunk{.data = record("A", 5, 128), .recordSize = 128}.bytes()), "A=5 ");
    EXPECT_EQ(read(Chunk{.data = record(std::string(52, 'x'), 4)}.bytes()), std::string(52, 'x') + "=4 ");
    for (const Chunk& chunk : {good, goodPacked})
    {
        const std::string whole = chunk.bytes();
        for (size_t length = 5; length < whole.size(); ++length)
            ASSERT_EQ(read(whole.substr(0, length)),
                      std::to_string(length) + ": it is cut off at byte " + std::to_string(length) + " of " +
                          (length < 48 ? "48 of its header" : std::to_string(whole.size())));
    }
}

TEST(ParameterChunk, AHeaderThatDoesNotHoldTogetherIsRefused)
{
    Chunk longHeader = goodPacked;
    longHeader.headerSize = 52;
    longHeader.data.insert(0, "more");
    EXPECT_EQ(read(longHeader.bytes()), "A=5 B=6 ");

    const std::vector<std::pair<const char*, std::function<void(Chunk&)>>> faults = {
        {"44: it holds no values", [](Chunk& c) { c.count = 0; }},
        {"36: its sizes do not agree: 3 values of 64 bytes in 128", [](Chunk& c) { c.count = 3; }},
        {"36: its sizes do not agree: 67108866 values", [](Chunk& c) { c.count = (1u << 26) + 2; }}, // wraps
        {"40: its values have 32 bytes each, and need 56", [](Chunk& c) { c.recordSize = 32, c.count = 4; }},
        {"36: its sizes do not agree: 2 values of 64 bytes in 129", [](Chunk& c) { c.rawSize += 1; }},
        {"36: it would unpack to 67108928 bytes",
         [](Chunk& c) { c.rawSize = (64u << 20) + 64, c.count = (1u << 20) + 1; }},
    };
    for (const auto& [why, spoil] : faults)
        for (Chunk chunk : {good, goodPacked})
        {
            spoil(chunk);
            EXPECT_TRUE(read(chunk.bytes()).starts_with(why)) << read(chunk.bytes());
        }

    const std::string one = record("A", 5);
    const std::pair<const char*, Chunk> chunks[] = {
        {"36: its sizes do not agree: 3", {.data = one, .count = 3, .rawSize = 128}}, // slack for records
        {"48: its data does not unpack", {.data = packed(one), .count = 2, .rawSize = 128, .compressed = 1}},
        {"48: its data does not unpack", {.data = data, .count = 2, .compressed = 1}},
        {"it is cut off",
         {.data = packed(data), .count = 2, .rawSize = 128, .compressed = 1, .headerSize = 0xffffffff}},
        {"176: it is cut off at byte 176 of 4294967343",
         {.data = data, .count = 2, .storedSize = 0xffffffff}},
    };
    for (const auto& [why, chunk] : chunks)
        EXPECT_NE(read(chunk.bytes()).find(why), std::string::npos) << read(chunk.bytes());
}

TEST(ParameterChunk, NothingIsUnpackedBeyond64MiBOrWhatIsAllowed)
{
    const auto ofSize = [](std::uint32_t size)
    {
        return Chunk{
            .data = packed(record("A", 5, size)), .recordSize = size, .rawSize = size, .compressed = 1}
            .bytes();
    };
    EXPECT_EQ(read(ofSize(64u << 20)), "A=5 ");
    EXPECT_EQ(read(ofSize((64u << 20) + 1)), "36: it would unpack to 67108865 bytes, which is too much");
    Orbel::UnpackingAllowance allowance(200);
    ParameterChunk chunk;
    EXPECT_TRUE(chunk.read(good.bytes(), allowance).taken);
    EXPECT_FALSE(chunk.read(good.bytes(), allowance).taken);
}
