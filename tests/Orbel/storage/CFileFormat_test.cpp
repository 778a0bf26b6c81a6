// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/CFileFormat.h"
#include "support/Bytes.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace Orbel;

namespace
{
constexpr int id = 0x51444B43;
const std::string start = "CcnK" + bigWord(52 + 7) + "FPCh" + bigWord(1) + "QDKC" + bigWord(1) + bigWord(0);
const std::string bankStart =
    "CcnK" + bigWord(152 + 7) + "FBCh" + bigWord(1) + "QDKC" + bigWord(1) + bigWord(0) + padded("", 128);
const std::string payload("p%n\0ad!", 7);

// What the format makes of the path; "untouched" if it leaves the outputs.
std::string load(CFileFormat& format, const std::string& path)
{
    char untouched = 'u';
    char* buffer = &untouched;
    long size = -1;
    const bool taken = format.loadFromFile(path.c_str(), &buffer, size).taken;
    EXPECT_EQ(taken, buffer != &untouched);
    if (buffer == &untouched)
        return size == -1 ? "untouched" : "only the size was touched";
    const std::string content(buffer, size_t(size));
    format.releaseBuffer(buffer);
    return content;
}

// The same from memory, out of a block of its own, so that the sanitizer sees an overrun.
std::string unwrap(const CPresetFormat& format, const std::string& image)
{
    const std::vector<char> exact(image.begin(), image.end());
    std::string_view found = "untouched";
    format.unwrap({exact.data(), exact.size()}, found);
    return std::string(found);
}

class CFileFormatTest : public testing::Test
{
protected:
    CFileFormatTest()
    {
        fxp.setPluginID(id);
        fxb.setPluginID(id);
    }

    const TempFolder folder;
    CPresetFormatFXP fxp;
    CPresetFormatFXB fxb;
};
}

TEST_F(CFileFormatTest, WritesTheWrappersToTheByte)
{
    const std::string program = start + padded("Deep 100%n House", 28) + bigWord(7) + payload;
    const std::string bank = bankStart + bigWord(7) + payload;
    EXPECT_TRUE(fxp.saveToFile((folder / "Deep 100%n House.dks").c_str(), payload.data(), 7));
    EXPECT_EQ(folder.content("Deep 100%n House.dks"), program);
    EXPECT_EQ(load(fxp, folder / "Deep 100%n House.dks"), payload);
    EXPECT_TRUE(fxb.saveToFile((folder / "bank.fxb").c_str(), payload.data(), 7));
    EXPECT_EQ(folder.content("bank.fxb"), bank);
    EXPECT_EQ(load(fxb, folder / "bank.fxb"), payload);

    const auto nameOf = [&](const char* name) { return fxp.wrap(name, payload.data(), 7).substr(28, 28); };
    EXPECT_EQ(nameOf("a name of thirty characters xy"), padded("a name of thirty characters", 28));
    EXPECT_EQ(nameOf("a name of twenty-six bytes\xC3\xA4"), padded("a name of twenty-six bytes", 28));
}

TEST_F(CFileFormatTest, SavesWholeFilesOrSaysWhyNot)
{
    const auto path = folder.put("file", "former");
    const std::vector<char> huge((64 << 20) - 59);
    EXPECT_NE(fxp.saveToFile(path.c_str(), nullptr, 6).problem, "");
    EXPECT_NE(fxb.saveToFile(path.c_str(), "x", -1).problem, "");
    EXPECT_EQ(fxp.saveToFile(path.c_str(), huge.data(), long(huge.size())).problem, "File too large");
    EXPECT_NE(gFileFormatNone.saveToFile(nullptr, "x", 1).problem, "");
    EXPECT_EQ(folder.content("file"), "former");
    EXPECT_EQ(folder.names(), std::set<std::string>{"file"});
    EXPECT_TRUE(gFileFormatNone.saveToFile(path.c_str(), payload.data(), 7));
    EXPECT_EQ(load(gFileFormatNone, path), payload);
}

TEST_F(CFileFormatTest, LoadsWhatIsThereFromImagesOfItsOwnPlugInAndSaysWhatIsWrong)
{
    // All that is declared but not used: byte size, versions, count and name.
    const std::string odd = "CcnK####FPCh####QDKC####" + padded("", 32, '#');
    const std::string good = odd + bigWord(7) + payload;
    const auto with = [&](size_t at, const char* bytes)
    { return std::string(good).replace(at, 4, bytes, 4); };
    struct Case
    {
        std::string image, expected;
        size_t at = 0;
        const char* why = "";
    };
    const Case cases[] = {
        {good, payload, 67},
        {good + "more", payload, 71},
        {odd + bigWord(8) + payload, payload, 67, "it is cut off at byte 67 of 68"},
        {odd + bigWord(0xffffffff) + payload, payload, 67, "it is cut off at byte 67 of 4294967355"},
        {odd + bigWord(7), "untouched", 60, "it is cut off at byte 60 of 67"},
        {odd, "untouched", 56, "it is cut off at byte 56 of 60 of its header"},
        {odd + bigWord(0) + payload, "untouched", 56, "it declares a chunk of no bytes"},
        {with(0, "CcnX"), "untouched", 0, "it begins with \"CcnX\", not \"CcnK\""},
        {with(8, "FBCh"), "untouched", 8, "its kind is \"FBCh\", not \"FPCh\""},
        {with(16, "CKDQ"), "untouched", 16, "it is of another plug-in: its id is \"CKDQ\", not \"QDKC\""},
    };
    for (const Case& each : cases)
    {
        std::string_view found;
        const Diagnosis diagnosis = fxp.unwrap(each.image, found);
        EXPECT_EQ(diagnosis.why, each.why);
        EXPECT_EQ(diagnosis.at, each.at) << each.why;
        EXPECT_EQ(unwrap(fxp, each.image), each.expected);
        EXPECT_EQ(load(fxp, folder.put("file", each.image)), each.expected);
    }
    const std::string bank = bankStart + bigWord(7) + payload;
    for (size_t length = 0; length <= bank.size(); ++length)
        ASSERT_EQ(unwrap(fxb, bank.substr(0, length)),
                  length <= 160 ? "untouched" : payload.substr(0, length - 160))
            << length;
}

TEST_F(CFileFormatTest, ReadsRegularFilesOfUpTo64MiB)
{
    mkfifo((folder / "pipe").c_str(), 0600); // opening it would wait for a writer
    std::filesystem::create_directory(folder / "folder");
    const std::string image = fxp.wrap("", payload.data(), 7);
    for (const auto& [size, fits] : {std::pair(64L << 20, true), {(64L << 20) + 1, false}, {3L << 30, false}})
    {
        ASSERT_EQ(truncate(folder.put("large", image).c_str(), size), 0); // the rest is a hole
        EXPECT_EQ(load(fxp, folder / "large"), fits ? payload : "untouched");
        EXPECT_EQ(load(gFileFormatNone, folder / "large").size(),
                  fits ? size_t(size) : std::string("untouched").size());
    }
    for (const char* name : {"pipe", "folder", "none"})
        EXPECT_EQ(load(gFileFormatNone, folder / name), "untouched") << name;
}
