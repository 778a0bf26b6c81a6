// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/Packing.h"
#include "Orbel/storage/ResourceStore.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace
{
std::string packed(const std::string& data)
{
    return Orbel::pack(data, data.size() + 1000).value();
}

struct Entry
{
    std::string name;
    std::uint32_t rawSize;
    std::uint32_t storedSize = 0xffffffff;
    std::uint32_t offset = 0;

    operator std::string() const
    {
        return padded(name, 256, '\0') + littleWord(rawSize) + littleWord(storedSize) + littleWord(offset);
    }
};

// A block of the current form, and one of the older form.
struct Block
{
    std::string index;
    std::string payload;

    operator std::string() const
    {
        const std::string storedIndex = packed(index);
        std::string header("RESOURCE2\0??", 12);
        for (const size_t number : {size_t(20), size_t(8192), payload.size(), 20 + storedIndex.size(),
                                    index.size(), storedIndex.size(), index.size() / 268})
            header += littleWord(std::uint32_t(number));
        return header + storedIndex + payload;
    }
};

struct OlderBlock
{
    std::string records;
    std::uint32_t compressed = 1;

    operator std::string() const
    {
        std::string data = compressed ? packed(records) : records;
        Orbel::fold(data);
        Orbel::scramble(data);
        return padded("resource", 10) + "??" + littleWord(32) + littleWord(0x1000) + littleWord(compressed) +
               littleWord(std::uint32_t(data.size())) + littleWord(std::uint32_t(records.size())) + data;
    }
};

std::string olderRecord(const std::string& name, const std::string& payload, std::uint32_t length)
{
    return std::string("Rcnk\0", 5) + padded(name, 255) + "????" + littleWord(280) + littleWord(0x1000) +
           littleWord(length) + "????" + payload;
}

// What readResource finds; "none" if it finds nothing. The block has memory of its own, so that an overrun
// shows.
std::string fetched(const std::string& block, const char* name)
{
    const std::vector<char> exact(block.begin(), block.end());
    return Orbel::readResource(exact.data(), exact.size(), name).value_or("none");
}

std::string fetched(const char* name)
{
    unsigned long size = 99;
    const char* const found = GetResource(name, size);
    EXPECT_TRUE(found || size == 0);
    return found ? std::string(found, size) : "none";
}

const std::string text = "a text, a text, a text";
const std::string longName(255, 'n');
const Block good{.index = std::string(Entry{"odd", 3}) + std::string(Entry{"none", 0, 0, 3}) +
                          std::string(Entry{"text", 22, std::uint32_t(packed(text).size()), 3}) +
                          std::string(Entry{"odd", 1, 0xffffffff, 1}) + std::string(Entry{longName, 3}) +
                          std::string(Entry{longName + "n", 3}) + std::string(Entry{"zero", 3, 0}),
                 // "odd" is "%n!", scrambled
                 .payload = "\x8F\x3B\x8B" + packed(text)};
const OlderBlock older{.records = olderRecord("text", "an older text", 13) + olderRecord("odd", "", 0) +
                                  olderRecord(longName + "x", "long", 4)};
}

TEST(ResourceStore, FetchesResourcesByTheirWholeName)
{
    const std::pair<std::string, std::string> cases[] = {
        {"odd", "%n!"},    {"none", ""},
        {"text", text},    {"zero", "%n!"},          // no stored size means scrambled
        {longName, "%n!"}, {longName + "n", "none"}, // a name without its end
        {"text2", "none"},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(fetched(good, name.c_str()), expected) << name;
    EXPECT_EQ(fetched(older, "text"), "an older text");
    OlderBlock plain = older;
    plain.compressed = 0;
    EXPECT_EQ(fetched(plain, "text"), "an older text");
}

TEST(ResourceStore, ABlockThatIsCutShortHoldsWhatIsWhole)
{
    const std::string block = good;
    const size_t payloadAt = block.size() - good.payload.size();
    for (size_t length = 0; length < block.size(); ++length)
    {
        ASSERT_EQ(fetched(block.substr(0, length), "odd"), length < payloadAt + 3 ? "none" : "%n!") << length;
        ASSERT_EQ(fetched(block.substr(0, length), "text"), "none") << length;
        const CResourceStore2 store(block.data(), long(length));
        const std::string why = store.getDiagnosis().why;
        ASSERT_EQ(store.getDiagnosis().taken, length >= payloadAt) << length;
        ASSERT_TRUE(why.starts_with(length < payloadAt ? "it is cut off at byte " + std::to_string(length)
                                                       : "its resource \""))
            << why;
    }
    EXPECT_TRUE(CResourceStore2(block.data(), long(block.size())).getDiagnosis().isSound());
    const std::string olderBlock = older;
    for (size_t length = 0; length < olderBlock.size(); ++length)
        ASSERT_EQ(fetched(olderBlock.substr(0, length), "text"), "none") << length;
}

TEST(ResourceStore, ABracketHandsOutCopiesUntilItEnds)
{
    const std::string block = good;
    SetResourcePtr(block.data(), long(block.size()));
    unsigned long size = 0;
    char* const one = GetResource("odd", size);
    char* const two = GetResource("odd", size);
    ASSERT_NE(one, two);
    closeResource(one);
    EXPECT_EQ(std::string(two, size), "%n!");
    SetResourcePtr(block.data(), 25);      // damaged, and bound all the same
    EXPECT_EQ(std::string(two, 3), "%n!"); // is not taken away with its block
    closeResource(two);
    FreeResources();
    EXPECT_EQ(fetched("text"), "none"); // nothing is bound
}

TEST(ResourceStore, BracketsOfSeveralThreadsDoNotMeet)
{
    const std::string block = good, olderBlock = older;
    const auto bracket = [&](const std::string& of, const std::string& expected)
    {
        for (int i = 0; i < 200; ++i)
        {
            SetResourcePtr(of.data(), long(of.size()));
            EXPECT_EQ(fetched("text"), expected);
            FreeResources();
        }
    };
    std::thread other(bracket, olderBlock, "an older text");
    bracket(block, text);
    other.join();
}
