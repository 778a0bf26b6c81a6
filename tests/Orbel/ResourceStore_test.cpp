#include "Orbel/Bytes.h"
#include "Orbel/Packing.h"
#include "Orbel/ResourceStore.h"

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

// A block of the current form, and one of the older form: fields that are not set are right.
struct Block
{
    std::string index;
    std::string payload;
    std::string magic{"RESOURCE2\0", 10};
    std::uint32_t indexOffset = 20;
    std::uint32_t entryCount = std::uint32_t(index.size() / 268);
    std::uint32_t rawIndexSize = std::uint32_t(index.size());
    std::string storedIndex = packed(index);
    std::uint32_t storedIndexSize = std::uint32_t(storedIndex.size());
    std::uint32_t payloadOffset = std::uint32_t(20 + storedIndex.size());

    operator std::string() const
    {
        return magic + "??" + littleWord(indexOffset) + littleWord(8192) +
               littleWord(std::uint32_t(payload.size())) + littleWord(payloadOffset) +
               littleWord(rawIndexSize) + littleWord(storedIndexSize) + littleWord(entryCount) + storedIndex +
               payload;
    }
};

struct OlderBlock
{
    std::string records;
    std::string id = "resource";
    std::uint32_t version = 0x1000;
    std::uint32_t compressed = 1;
    std::uint32_t rawSize = std::uint32_t(records.size());

    operator std::string() const
    {
        std::string data = compressed ? packed(records) : records;
        Orbel::fold(data);
        Orbel::scramble(data);
        return padded(id, 10) + "??" + littleWord(32) + littleWord(version) + littleWord(compressed) +
               littleWord(std::uint32_t(data.size())) + littleWord(rawSize) + data;
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
        {"odd", "%n!"},
        {"none", ""},
        {"text", text},
        {"zero", "%n!"}, // no stored size means scrambled
        {longName, "%n!"},
        {longName + "n", "none"}, // a name without its end
        {longName + "nn", "none"},
        {"tex", "none"},
        {"text2", "none"},
        {"", "none"},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(fetched(good, name.c_str()), expected) << name;
    EXPECT_EQ(fetched(good, nullptr), "none");
    EXPECT_EQ(fetched(older, "text"), "an older text");
    EXPECT_EQ(fetched(older, "odd"), "");
    EXPECT_EQ(fetched(older, longName.c_str()), "long");
    EXPECT_EQ(fetched(older, "none"), "none");
    OlderBlock plain = older;
    plain.compressed = 0;
    EXPECT_EQ(fetched(plain, "text"), "an older text");
    EXPECT_FALSE(Orbel::readResource(nullptr, 100, "text"));
}

TEST(ResourceStore, ABlockThatIsCutShortHoldsWhatIsWhole)
{
    const std::string block = good;
    const size_t payloadAt = block.size() - good.payload.size();
    for (size_t length = 0; length < block.size(); ++length)
    {
        ASSERT_EQ(fetched(block.substr(0, length), "odd"), length < payloadAt + 3 ? "none" : "%n!") << length;
        ASSERT_EQ(fetched(block.substr(0, length), "text"), "none") << length;
    }
    const std::string olderBlock = older;
    for (size_t length = 0; length < olderBlock.size(); ++length)
        ASSERT_EQ(fetched(olderBlock.substr(0, length), "text"), "none") << length;
}

TEST(ResourceStore, NothingIsFoundWhereTheNumbersDoNotHoldTogether)
{
    const auto spoiled = [](auto spoil)
    {
        Block block = good;
        spoil(block);
        return fetched(block, "text");
    };
    EXPECT_EQ(spoiled([](Block&) {}), text);
    EXPECT_EQ(spoiled([](Block& b) { b.rawIndexSize -= 100; }), text); // an index may be that much longer
    EXPECT_EQ(spoiled([](Block& b) { b.rawIndexSize -= 101; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.rawIndexSize = 0xffffffff; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.magic[8] = '3'; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.magic[9] = '!'; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.indexOffset = 0xffffffff; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.entryCount += 1; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.entryCount = 0xffffffff; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.entryCount = 2; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.storedIndexSize = 0xffffffff; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.storedIndexSize -= 1; }), "none");
    EXPECT_EQ(spoiled([](Block& b) { b.payloadOffset = 0xffffffff; }), "none");

    const auto withEntry = [](const Entry& entry)
    { return fetched(Block{.index = entry, .payload = packed(text)}, "x"); };
    const auto size = std::uint32_t(packed(text).size());
    EXPECT_EQ(withEntry({"x", 22, size}), text);
    EXPECT_EQ(withEntry({"x", 2, size}), text); // 20 bytes more than it says are taken
    EXPECT_EQ(withEntry({"x", 1, size}), "none");
    EXPECT_EQ(withEntry({"x", 22, size + 1}), "none");
    EXPECT_EQ(withEntry({"x", 22, size, 1}), "none");
    EXPECT_EQ(withEntry({"x", 22, size, 0xffffffff}), "none");
    EXPECT_EQ(withEntry({"x", 22, 0x7fffffff}), "none");
    EXPECT_EQ(withEntry({"x", 0xffffffff, size}), "none");
    EXPECT_EQ(withEntry({"x", 0xffffffff}), "none");
    EXPECT_EQ(withEntry({"x", size + 1}), "none");

    for (const OlderBlock& block : {OlderBlock{.records = older.records, .id = "resourc"},
                                    {.records = older.records, .version = 0x1001},
                                    {.records = older.records, .rawSize = 0xffffffff},
                                    {.records = older.records, .rawSize = 100},
                                    {.records = olderRecord("text", "an older text", 14)}})
        EXPECT_EQ(fetched(block, "text"), "none");
}

TEST(ResourceStore, TheOlderStoreSaysWhatItRefuses)
{
    Orbel::Resource::CResourceStore store;
    const std::string bytes = older, short1 = bytes.substr(0, bytes.size() - 1);
    unsigned long size = 0;
    EXPECT_EQ(store.loadResources(bytes.data(), long(bytes.size())), 0);
    EXPECT_NE(store.getResource("text", size), nullptr);
    EXPECT_EQ(store.getResource(nullptr, size), nullptr);
    EXPECT_EQ(store.loadResources(short1.data(), long(short1.size())), 2);
    EXPECT_EQ(store.getResource("text", size), nullptr);
    EXPECT_EQ(store.loadResources(nullptr, 1000), 2);
}

TEST(ResourceStore, ABracketHandsOutCopiesUntilItEnds)
{
    const std::string block = good, olderBlock = older;
    EXPECT_EQ(fetched("odd"), "none"); // nothing is bound
    closeResource("x");
    FreeResources();

    SetResourcePtr(block.data(), long(block.size()));
    unsigned long size = 0;
    char* const one = GetResource("odd", size);
    char* const two = GetResource("odd", size);
    ASSERT_NE(one, two);
    closeResource(one);
    closeResource(one + 1); // no buffer
    EXPECT_EQ(std::string(two, size), "%n!");
    SetResourcePtr(nullptr, 10);
    SetResourcePtr(block.data(), 25); // damaged, and bound all the same
    EXPECT_EQ(fetched("odd"), "none");
    EXPECT_EQ(std::string(two, 3), "%n!"); // is not taken away with its block
    closeResource(two);
    FreeResources();

    SetResourcePtr(olderBlock.data(), long(olderBlock.size()));
    EXPECT_EQ(fetched("text"), "an older text");
    SetResourcePtr(block.data(), long(block.size()));
    EXPECT_EQ(fetched("text"), text);
    FreeResources();
    EXPECT_EQ(fetched("text"), "none");
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
