// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/CPresetStore.h"
#include "Orbel/storage/Packing.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

using Orbel::CPresetStore;
using Strings = std::vector<std::string>;

namespace
{
struct Record
{
    std::string name;
    std::string payload;
    std::uint32_t headerSize = 40;
    std::uint32_t version = 0x1000;
    std::uint32_t length = std::uint32_t(payload.size());
    std::string tag{"KCnk\0", 5};
    std::string reserved = "???";

    operator std::string() const
    {
        return tag + padded(name, 20) + reserved + littleWord(headerSize) + littleWord(version) +
               littleWord(length) + payload;
    }
};

std::string allOf(std::initializer_list<Record> records)
{
    std::string bytes;
    for (const Record& record : records)
        bytes += record;
    return bytes;
}

std::string packed(const std::string& data)
{
    return Orbel::pack(data, data.size() + 1000).value();
}

// A store as another version or an attacker might write it; fields that are not set are right.
struct Image
{
    std::string records;
    std::string id = "ppst";
    std::uint32_t compressed = 1;
    std::string data = compressed ? packed(records) : records;
    std::uint32_t headerSize = 44;
    std::uint32_t version = 0x1000;
    std::uint32_t storedSize = std::uint32_t(data.size());
    std::uint32_t rawSize = std::uint32_t(records.size());

    operator std::string() const
    {
        std::string folded = data;
        Orbel::fold(folded);
        return padded(id, 20) + "????" + littleWord(headerSize) + littleWord(version) +
               littleWord(compressed) + littleWord(storedSize) + littleWord(rawSize) + folded;
    }
};

// Loads from a block of its own, so that the sanitizer sees an overrun.
Orbel::Diagnosis load(CPresetStore& store, const std::string& bytes)
{
    std::vector<char> exact(bytes.begin(), bytes.end());
    Orbel::UnpackingAllowance allowance;
    return store.read(exact, allowance);
}

// The texts of the chunks "A", "B" and "C" after loading, "-" for one that is missing; of a store that is
// refused the reason alone.
Strings loaded(const std::string& bytes)
{
    CPresetStore store;
    if (const auto found = load(store, bytes); !found.taken)
        return {std::to_string(found.at) + ": " + found.why};
    Strings texts;
    for (const char* name : {"A", "B", "C"})
    {
        char* data = nullptr;
        const long length = store.getChunk(name, &data);
        texts.push_back(data ? std::string(data, size_t(length)) : "-");
    }
    return texts;
}

std::string saved(CPresetStore& store)
{
    char* data = nullptr;
    const long size = store.getPreset(&data);
    return {data, size_t(size)};
}

const std::string abc = allOf({{"A", "first"}, {"B", ""}, {"C", "3"}});
const Strings whole = {"first", "", "3"};
const Strings nothing = {"-", "-", "-"};
}

TEST(CPresetStore, WritesTheFormatToTheByte)
{
    CPresetStore store;
    store.setPresetID("an id of over twenty characters");
    store.setPresetName("%n%s");
    store.addChunk("a name of over twenty characters", "\0\1\2", 3);
    store.addString("TEXT", "100%");
    const auto written = [](const std::string& name, const std::string& payload)
    { return std::string(Record{.name = name, .payload = payload, .reserved = padded("", 3)}); };
    const std::string name = written("PresetName", padded("%n%s", 5));
    std::string records =
        written("a name of over twent", std::string("\0\1\2", 3)) + written("TEXT", padded("100%", 5));
    for (int call = 1; call <= 2; ++call)
    {
        records += name; // at each call
        const std::string bytes = saved(store);
        std::string data = bytes.substr(44), raw;
        EXPECT_EQ(bytes.substr(0, 44),
                  "an id of over twenty" + padded("", 4) + littleWord(44) + littleWord(4096) + littleWord(1) +
                      littleWord(std::uint32_t(data.size())) + littleWord(std::uint32_t(records.size())));
        Orbel::unfold(data);
        ASSERT_TRUE(Orbel::unpack(data, records.size(), raw));
        EXPECT_EQ(raw, records);
    }
}

TEST(CPresetStore, ReadsBackWhatItWrote)
{
    std::mt19937 random(1);
    std::string noise(200001, '\0'); // cannot be packed, so it is stored as it is
    for (char& byte : noise)
        byte = char(random());
    for (const std::string& payload : {std::string(), std::string("%s%n"), std::string(300000, 'x'), noise})
    {
        CPresetStore written, read;
        written.addChunk("PAYLOAD", payload.data(), long(payload.size()));
        written.addString("TEXT", "100%d");
        const std::string bytes = saved(written);
        EXPECT_EQ(bytes[32], payload == noise ? 0 : 1);
        ASSERT_TRUE(load(read, bytes).isSound());
        char* found = nullptr;
        EXPECT_EQ(read.getChunk("PAYLOAD", &found), long(payload.size()));
        EXPECT_EQ(std::string(found, payload.size()), payload);
        EXPECT_EQ(read.getString("TEXT"), "100%d");
    }
}

TEST(CPresetStore, TakesAStoreWholeOrSaysWhereItIsCut)
{
    const std::string bytes = Image{abc};
    EXPECT_EQ(loaded(bytes + "more"), whole);
    for (size_t length = 0; length < bytes.size(); ++length)
        ASSERT_EQ(loaded(bytes.substr(0, length)),
                  Strings{std::to_string(length) + ": it is cut off at byte " + std::to_string(length) +
                          " of " + (length < 44 ? "44 of its header" : std::to_string(bytes.size()))});
}

TEST(CPresetStore, JudgesAStoreByItsHeader)
{
    const std::string size = std::to_string(std::string(Image{abc}).size());
    const std::pair<Image, Strings> cases[] = {
        {{.records = abc}, whole},
        {{.records = abc, .compressed = 0}, whole},
        {{.records = abc, .id = padded("pp", 20, '\1')},
         {"0: its id is \"pp" + std::string(18, '\1') + "\", not \"ppst\""}},
        {{.records = abc, .version = 0x1001}, {"28: its version is 4097, and 4096 is the highest known"}},
        {{.records = abc, .headerSize = 0xffffffff, .storedSize = 45}, // the sum is 44 in 32 bits
         {size + ": it is cut off at byte " + size + " of 4294967340"}},
        {{.records = abc, .storedSize = 0xffffffff},
         {size + ": it is cut off at byte " + size + " of 4294967339"}},
        {{.records = abc, .rawSize = 64 << 20}, whole},
        {{.records = abc, .rawSize = (64 << 20) + 1},
         {"40: it would unpack to 67108865 bytes, which is too much"}},
        {{.records = abc, .rawSize = 100}, nothing}, // too little room to unpack into
        {{.records = abc, .storedSize = 10}, nothing},
        {{.records = abc, .data = "no stream"}, nothing},
        {{.records = abc, .compressed = 0, .rawSize = 45}, {"first", "-", "-"}},
    };
    for (const auto& [image, expected] : cases)
        EXPECT_EQ(loaded(image), expected) << "case " << &image - &cases[0].first;
    std::string folded = packed(abc);
    Orbel::fold(folded);
    const std::string header = Image{.records = abc, .headerSize = 48};
    EXPECT_EQ(loaded(header.substr(0, 44) + "more" + folded), whole);
    CPresetStore store;
    std::string image = Image{abc};
    EXPECT_EQ(store.setPreset(image.data(), long(image.size())), 0); // the contract's answers
    EXPECT_EQ(store.setPreset(image.data(), 8), 2);
}

TEST(CPresetStore, KeepsWhatStandsAheadOfADamagedRecord)
{
    const Record last{"C", "3"};
    const std::string overlapped = "234" + std::string(last).substr(0, 40);
    const Strings all = {"first", "2", "3"}, one = {"first", "-", "-"};
    const std::pair<Record, Strings> cases[] = {
        {{.name = "B", .payload = "2"}, all},
        {{.name = "B", .payload = "2", .version = 0x1001}, one},
        {{.name = "B", .payload = "2", .tag = "KCnkx"}, one},
        {{.name = "B", .payload = "2", .length = 1000}, one},
        {{.name = "B", .payload = "2", .length = 0xffffffff}, one},
        {{.name = "B", .payload = "2", .headerSize = 0xffffffff}, one}, // steps to itself in 32 bits
        {{.name = "B", .payload = "", .headerSize = 0}, one},           // stands still
        // The step goes by the header size, the payload does not.
        {{.name = "B", .payload = "2345", .headerSize = 42, .length = 2}, {"first", "23", "3"}},
        {{.name = "B", .payload = "234", .headerSize = 0, .length = 43}, {"first", overlapped, "3"}},
    };
    for (const auto& [record, expected] : cases)
    {
        const std::string records = allOf({{"A", "first"}, record, last});
        EXPECT_EQ(loaded(Image{records}), expected) << "case " << &record - &cases[0].first;
        CPresetStore store;
        const std::string why = "its chunks end after 1, at byte 45 of " + std::to_string(records.size());
        EXPECT_EQ(load(store, Image{records}).why, expected == one ? why : "");
    }
    for (size_t length = 0; length < abc.size(); ++length)
    {
        const Strings expected = {length < 45 ? "-" : "first", length < 85 ? "-" : "", "-"};
        ASSERT_EQ(loaded(Image{abc.substr(0, length)}), expected) << length;
    }
}

TEST(CPresetStore, FindsTheFirstOfANameByTwentyCharacters)
{
    const std::string twenty(20, 'x');
    CPresetStore store;
    ASSERT_TRUE(
        load(store, Image{allOf({{"Z", "z1"}, {twenty, "20"}, {"Z", "z2"}, {"", "none"}})}).isSound());
    EXPECT_EQ(store.getString("Z"), "z1");
    EXPECT_EQ(store.getString(twenty + "and more"), "20");
    EXPECT_EQ(store.getString(twenty.substr(1)), "");
    EXPECT_EQ(store.getString(""), "none"); // ends with its chunk
    EXPECT_EQ(store.getChunkCount(), 4);
}

TEST(CPresetStore, TakesAStoredNameOfUpTo40BytesAndCutsNoCharacterInWriting)
{
    const std::string forty(40, 'n'), umlaut = "\xC3\xA4", note = "\xF0\x9F\x8E\xB5";
    const std::pair<std::string, std::string> stored[] = {
        {padded("%n%s", 5), "%n%s"},
        {padded(forty, 41), forty},
        {forty + "1", "former"},
        {"", "NoName"},
    };
    for (const auto& [name, expected] : stored)
    {
        CPresetStore store;
        store.setPresetName("former");
        ASSERT_TRUE(load(store, Image{allOf({{"PresetName", name}})}).isSound());
        EXPECT_EQ(store.getPresetName(), expected) << "from " << name;
    }
    const std::pair<std::string, size_t> written[] = {{forty + "1", 40},
                                                      {forty.substr(2) + umlaut, 40},
                                                      {forty.substr(1) + umlaut, 39},
                                                      {forty.substr(3) + note, 37}};
    for (const auto& [name, length] : written)
    {
        CPresetStore store;
        store.setPresetName(name.c_str());
        EXPECT_EQ(store.getPresetName(), name.substr(0, length));
    }
}
