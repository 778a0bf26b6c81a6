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
    format.loadFromFile(path.c_str(), &buffer, size);
    if (buffer == &untouched)
        return size == -1 ? "untouched" : "only the size was touched";
    const std::string content(buffer, size_t(size));
    format.releaseBuffer(buffer);
    return content;
}

// The same from memory, out of a block of its own, so that an overrun shows.
std::string unwrap(const CPresetFormat& format, const std::string& image)
{
    const std::vector<char> exact(image.begin(), image.end());
    const char* found = nullptr;
    long size = -1;
    if (!format.unwrap(exact.data(), long(exact.size()), &found, &size))
        return found || size != -1 ? "refused, but written" : "untouched";
    return {found, size_t(size)};
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
    EXPECT_EQ(fxp.wrap("Deep 100%n House", payload.data(), 7), program);
    EXPECT_EQ(fxb.wrap(payload.data(), 7), bank);

    fxp.saveToFile((folder / "Deep 100%n House.dks").c_str(), payload.data(), 7);
    EXPECT_EQ(folder.content("Deep 100%n House.dks"), program);
    EXPECT_EQ(load(fxp, folder / "Deep 100%n House.dks"), payload);
    fxb.saveToFile((folder / "bank.fxb").c_str(), payload.data(), 7);
    EXPECT_EQ(folder.content("bank.fxb"), bank);
    EXPECT_EQ(load(fxb, folder / "bank.fxb"), payload);

    EXPECT_EQ(fxp.wrap("a name of thirty characters xy", payload.data(), 7).substr(28, 28),
              padded("a name of thirty characters", 28));
}

TEST_F(CFileFormatTest, SavesWholeFilesOrNothing)
{
    const auto path = folder.put("file", "former");
    fxp.saveToFile(path.c_str(), nullptr, 6);
    fxb.saveToFile(path.c_str(), "x", -1);
    gFileFormatNone.saveToFile(nullptr, "x", 1);
    const std::vector<char> huge((64 << 20) - 59);
    fxp.saveToFile(path.c_str(), huge.data(), long(huge.size()));
    EXPECT_EQ(folder.content("file"), "former");
    EXPECT_EQ(folder.names(), std::set<std::string>{"file"});
    gFileFormatNone.saveToFile(path.c_str(), payload.data(), 7);
    EXPECT_EQ(folder.content("file"), payload);
    EXPECT_EQ(load(gFileFormatNone, path), payload);
}

TEST_F(CFileFormatTest, LoadsWhatIsThereFromImagesOfItsOwnPlugIn)
{
    // All that is declared but not used: byte size, versions, count and name.
    const std::string odd = "CcnK####FPCh####QDKC####" + padded("", 32, '#');
    const std::string good = odd + bigWord(7) + payload;
    const auto with = [&](size_t at, const char* bytes)
    { return std::string(good).replace(at, 4, bytes, 4); };
    const std::pair<std::string, std::string> cases[] = {
        {good, payload},
        {good + "more", payload},
        {odd + bigWord(8) + payload, payload},
        {odd + bigWord(0xffffffff) + payload, payload},
        {odd + bigWord(0) + payload, "untouched"},
        {with(0, "CcnX"), "untouched"},
        {with(8, "FBCh"), "untouched"},
        {with(16, "CKDQ"), "untouched"},
    };
    for (const auto& [image, expected] : cases)
    {
        EXPECT_EQ(unwrap(fxp, image), expected);
        EXPECT_EQ(load(fxp, folder.put("file", image)), expected);
    }
    const std::string bank = bankStart + bigWord(7) + payload;
    for (const auto& [format, image, headerSize] :
         {std::tuple(static_cast<CPresetFormat*>(&fxp), good, 60u), {&fxb, bank, 160u}})
        for (size_t length = 0; length <= image.size(); ++length)
        {
            const auto expected = length <= headerSize ? "untouched" : payload.substr(0, length - headerSize);
            ASSERT_EQ(unwrap(*format, image.substr(0, length)), expected) << length;
        }
}

TEST_F(CFileFormatTest, ReadsPlainFilesOfUpTo64MiB)
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
